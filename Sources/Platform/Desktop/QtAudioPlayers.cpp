#include "Platform/Desktop/QtAudioPlayers.h"

#include "Foundation/Error.h"

#include <QAudioDevice>
#include <QAudioOutput>
#include <QFile>
#include <QFileInfo>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QUrl>

#include <sndfile.h>

#include <cerrno>

namespace {
/// Throws what keeps the file from being read as sound. The media player itself tells that only once it
/// plays.
void expectSound(const FileURL &url) {
    // Opening a pipe or a device could wait for ever.
    const QFileInfo file(url.path());
    if (!file.exists())
        throw SystemError::fromErrno(ENOENT, url.path());
    if (file.isDir())
        throw SystemError::fromErrno(EISDIR, url.path());
    if (!file.isFile())
        throw SystemError::fromErrno(EINVAL, url.path());
    SF_INFO info {};
    errno = 0;
    SNDFILE *sound = sf_open(QFile::encodeName(url.path()).constData(), SFM_READ, &info);
    if (sound) {
        sf_close(sound);
        return;
    }
    if (errno == EACCES || errno == EIO || errno == EMFILE)
        throw SystemError::fromErrno(errno, url.path());
    throw SystemError(QString::fromUtf8(sf_strerror(nullptr)) + QStringLiteral(": ") + url.path());
}

class QtAudioPlayer final : public AudioPlayer {
public:
    explicit QtAudioPlayer(const FileURL &url)
        : m_url(QUrl::fromLocalFile(url.path())) {
        m_player.setAudioOutput(&m_output);
        QObject::connect(&m_player, &QMediaPlayer::mediaStatusChanged, &m_player,
            [this](QMediaPlayer::MediaStatus status) {
                if (status == QMediaPlayer::EndOfMedia)
                    finish(true);
            });
        QObject::connect(&m_player, &QMediaPlayer::errorOccurred, &m_player, [this] { finish(false); });
    }

    void setDidFinishPlaying(DidFinishPlaying observer) override { m_didFinishPlaying = std::move(observer); }
    void prepareToPlay() override {
        if (m_player.source().isEmpty())
            m_player.setSource(m_url);
    }
    bool play() override {
        // A player without an output would run through the file unheard.
        if (QMediaDevices::defaultAudioOutput().isNull())
            return false;
        prepareToPlay();
        m_player.play();
        return m_player.error() == QMediaPlayer::NoError;
    }
    void pause() override { m_player.pause(); }
    void stop() override { m_player.stop(); }

private:
    void finish(bool successfully) const {
        if (m_didFinishPlaying)
            m_didFinishPlaying(successfully);
    }

    const QUrl m_url;
    DidFinishPlaying m_didFinishPlaying;
    // The player is gone before its output.
    QAudioOutput m_output;
    QMediaPlayer m_player;
};
} // namespace

void QtAudioPlayers::chooseLibrary() {
    if (!qEnvironmentVariableIsSet("QT_MEDIA_BACKEND"))
        qputenv("QT_MEDIA_BACKEND", "ffmpeg");
}

std::unique_ptr<AudioPlayer> QtAudioPlayers::open(const FileURL &url) {
    expectSound(url);
    return std::make_unique<QtAudioPlayer>(url);
}
