#include "Platform/Desktop/SndFileReader.h"

#include "Foundation/Error.h"

#include <QFile>
#include <QFileInfo>

#include <sndfile.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

struct SndFileReader::Native {
    SNDFILE *file = nullptr;
    SF_INFO info {};
    /// The sound file, if it is in memory, and the read position.
    QByteArray content;
    sf_count_t place = 0;

    ~Native() {
        if (file)
            sf_close(file);
    }
};

namespace {
void expectFile(const QString &path) {
    const QFileInfo file(path);
    if (!file.exists())
        throw SystemError::fromErrno(ENOENT, path);
    if (file.isDir())
        throw SystemError::fromErrno(EISDIR, path);
    if (!file.isFile())
        throw SystemError::fromErrno(EINVAL, path);
}
} // namespace

SndFileReader::SndFileReader(std::unique_ptr<Native> native)
    : m_native(std::move(native)) { }

SndFileReader::~SndFileReader() = default;

std::unique_ptr<SndFileReader> SndFileReader::open(const FileURL &url) {
    const QString &path = url.path();
    expectFile(path);
    auto native = std::make_unique<Native>();
    errno = 0;
    native->file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &native->info);
    if (native->file)
        return std::unique_ptr<SndFileReader>(new SndFileReader(std::move(native)));
    if (errno == EACCES || errno == EIO || errno == EMFILE)
        throw SystemError::fromErrno(errno, path);
    throw SystemError(QString::fromUtf8(sf_strerror(nullptr)) + QStringLiteral(": ") + path);
}

std::unique_ptr<SndFileReader> SndFileReader::ofContent(QByteArray content) {
    auto native = std::make_unique<Native>();
    native->content = std::move(content);
    SF_VIRTUAL_IO memory {};
    memory.get_filelen = [](void *self) -> sf_count_t { return static_cast<Native *>(self)->content.size(); };
    memory.seek = [](sf_count_t offset, int whence, void *self) -> sf_count_t {
        auto &native = *static_cast<Native *>(self);
        const sf_count_t base = whence == SEEK_SET ? 0
            : whence == SEEK_CUR                   ? native.place
                                                   : native.content.size();
        native.place = std::clamp<sf_count_t>(base + offset, 0, native.content.size());
        return native.place;
    };
    memory.read = [](void *target, sf_count_t count, void *self) -> sf_count_t {
        auto &native = *static_cast<Native *>(self);
        const sf_count_t taken = std::min<sf_count_t>(count, native.content.size() - native.place);
        std::memcpy(target, native.content.constData() + native.place, size_t(taken));
        native.place += taken;
        return taken;
    };
    memory.tell = [](void *self) -> sf_count_t { return static_cast<Native *>(self)->place; };
    native->file = sf_open_virtual(&memory, SFM_READ, &native->info, native.get());
    if (!native->file)
        return nullptr;
    return std::unique_ptr<SndFileReader>(new SndFileReader(std::move(native)));
}

AudioFormat SndFileReader::format() const {
    return { double(m_native->info.samplerate), m_native->info.channels };
}

qint64 SndFileReader::frameCount() const {
    return m_native->info.frames;
}

qint64 SndFileReader::read(float *samples, qint64 count) {
    return sf_readf_float(m_native->file, samples, count);
}

void SndFileReader::seek(qint64 frame) {
    sf_seek(m_native->file, frame, SEEK_SET);
}
