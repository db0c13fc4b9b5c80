#include "Support/FakeAudioFileStore.h"

#include <cerrno>

class FakeAudioFileStore::Writer final : public AudioFileWriter {
public:
    Writer(FakeAudioFileStore &store, std::shared_ptr<File> file)
        : m_store(store)
        , m_file(std::move(file)) { }

    ~Writer() override {
        const std::lock_guard lock(m_store.m_mutex);
        m_file->isOpen = false;
    }

    void write(const AudioBuffer &buffer) override {
        if (m_store.onWrite)
            m_store.onWrite();
        const std::lock_guard lock(m_store.m_mutex);
        if (m_store.failingWrites.count(m_store.writeCount++) > 0)
            throw SystemError::fromErrno(ENOSPC, m_file->url.path());
        if (buffer.format != m_file->format || int(buffer.channels.size()) != m_file->format.channelCount)
            throw SystemError(
                QStringLiteral("The sound has another format than its file: ") + m_file->url.path());
        const auto &samples = buffer.channels.front();
        m_file->samples.insert(m_file->samples.end(), samples.begin(), samples.end());
    }

private:
    FakeAudioFileStore &m_store;
    std::shared_ptr<File> m_file;
};

std::unique_ptr<AudioFileWriter> FakeAudioFileStore::create(const FileURL &url, const AudioFormat &format) {
    const std::lock_guard lock(m_mutex);
    if (!createFailures.empty()) {
        const SystemError failure = createFailures.front();
        createFailures.pop_front();
        throw failure;
    }
    files.push_back(std::make_shared<File>(File { url, format, {}, true }));
    return std::make_unique<Writer>(*this, files.back());
}
