#include "Platform/Desktop/SndFileStore.h"

#include "Foundation/Error.h"

#include <QFile>

#include <sndfile.h>

#include <cerrno>
#include <cstdio>

namespace {
constexpr QFile::Permissions privateToUser = QFile::ReadOwner | QFile::WriteOwner;

/// The error of the call that just failed: the system's if it set one, else libsndfile's.
SystemError lastError(SNDFILE *file, const QString &path) {
    if (errno != 0)
        return SystemError::fromErrno(errno, path);
    return SystemError(QString::fromUtf8(sf_strerror(file)) + QStringLiteral(": ") + path);
}

class WavFileWriter final : public AudioFileWriter {
public:
    WavFileWriter(const FileURL &url, const AudioFormat &format, int sampleEncoding);

    void write(const AudioBuffer &buffer) override;

private:
    struct Close {
        void operator()(SNDFILE *file) const { sf_close(file); }
    };

    void open();
    const float *interleaved(const AudioBuffer &buffer);

    AudioFormat m_format;
    QFile m_file;
    /// Writes through the descriptor of m_file, so it must be closed first.
    std::unique_ptr<SNDFILE, Close> m_wav;
    std::vector<float> m_interleaved;
    sf_count_t m_frameCount = 0;
};

WavFileWriter::WavFileWriter(const FileURL &url, const AudioFormat &format, int sampleEncoding)
    : m_format(format)
    , m_file(url.path()) {
    open();
    SF_INFO info {};
    info.samplerate = int(format.sampleRate);
    info.channels = format.channelCount;
    info.format = SF_FORMAT_WAV | sampleEncoding;
    errno = 0;
    m_wav.reset(sf_open_fd(m_file.handle(), SFM_WRITE, &info, SF_FALSE));
    if (!m_wav)
        throw lastError(nullptr, m_file.fileName());
    sf_command(m_wav.get(), SFC_SET_UPDATE_HEADER_AUTO, nullptr, SF_TRUE);
    // The peak chunk contains a timestamp and is never used.
    sf_command(m_wav.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    // Clip samples beyond full scale in integer files instead of wrapping around.
    sf_command(m_wav.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
}

void WavFileWriter::open() {
    const QString path = m_file.fileName();
    errno = 0;
    const bool isOpen
        = m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered, privateToUser);
    // The mode at creation protects a new file from the start; this protects an existing one.
    if (isOpen && m_file.setPermissions(privateToUser))
        return;
    throw errno != 0 ? SystemError::fromErrno(errno, path)
                     : SystemError(m_file.errorString() + QStringLiteral(": ") + path);
}

const float *WavFileWriter::interleaved(const AudioBuffer &buffer) {
    if (buffer.channels.size() == 1)
        return buffer.channels.front().data();
    m_interleaved.clear();
    for (size_t frame = 0; frame < size_t(buffer.frameLength); ++frame)
        for (const auto &channel : buffer.channels)
            m_interleaved.push_back(channel[frame]);
    return m_interleaved.data();
}

void WavFileWriter::write(const AudioBuffer &buffer) {
    if (buffer.format != m_format || int(buffer.channels.size()) != m_format.channelCount)
        throw SystemError(QStringLiteral("The sound has another format than its file: ") + m_file.fileName());
    errno = 0;
    const sf_count_t written = sf_writef_float(m_wav.get(), interleaved(buffer), buffer.frameLength);
    m_frameCount += written;
    if (written == buffer.frameLength)
        return;
    const SystemError error = lastError(m_wav.get(), m_file.fileName());
    // A full disk may have accepted part of a sample; later writes must stay aligned.
    sf_seek(m_wav.get(), m_frameCount, SEEK_SET | SFM_WRITE);
    throw error;
}
} // namespace

std::unique_ptr<AudioFileWriter> SndFileStore::create(const FileURL &url, const AudioFormat &format) {
    return std::make_unique<WavFileWriter>(url, format, SF_FORMAT_FLOAT);
}

std::unique_ptr<AudioFileWriter> SndFileStore::createInteger(
    const FileURL &url, const RecordingSettings &settings) {
    if (settings.bitDepth != 16)
        throw SystemError(
            QStringLiteral("Recordings of %1 bits cannot be written: ").arg(settings.bitDepth) + url.path());
    const AudioFormat format { double(settings.sampleRate), settings.channelCount };
    return std::make_unique<WavFileWriter>(url, format, SF_FORMAT_PCM_16);
}
