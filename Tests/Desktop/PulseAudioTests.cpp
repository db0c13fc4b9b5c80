#include "Desktop/SoundServer.h"
#include "Platform/Desktop/SndFileStore.h"
#include "Platform/Linux/Pulse/PulseAudioEngine.h"
#include "Platform/Linux/Pulse/PulseFileRecorder.h"
#include "Platform/Linux/Pulse/PulseMicrophonePermission.h"
#include "Support/AudioEngineContract.h"
#include "Support/VirtualClock.h"

#include <QDir>
#include <QFile>

#include <netinet/in.h>
#include <sndfile.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cmath>
#include <numbers>

namespace {
class PulseSubject final : public AudioEngineSubject {
public:
    AudioEngine &engine() override { return m_engine; }
    bool soundUntil(std::function<bool()> condition) override { return waitUntil(condition); }
    void removeSource() override { m_server.removeMicrophone(); }
    void bringSourceBack() override { m_server.addMicrophone(); }

private:
    SoundServer m_server;
    PulseConnection m_connection;
    PulseAudioEngine m_engine { m_connection };
};

std::unique_ptr<AudioEngineSubject> makePulse() {
    return std::make_unique<PulseSubject>();
}

/// A port of the loopback that nobody uses.
int freePort() {
    const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    bind(descriptor, reinterpret_cast<sockaddr *>(&address), size);
    getsockname(descriptor, reinterpret_cast<sockaddr *>(&address), &size);
    close(descriptor);
    return ntohs(address.sin_port);
}

/// What the kernel calls this process' threads; the first is the one that runs main().
QByteArrayList threadNames() {
    QByteArrayList names;
    const QDir threads(QStringLiteral("/proc/self/task"));
    for (const QString &id : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile name(threads.filePath(id + QStringLiteral("/comm")));
        if (!name.open(QIODevice::ReadOnly))
            continue;
        if (id.toLongLong() == getpid())
            names.prepend(name.readAll().trimmed());
        else
            names.append(name.readAll().trimmed());
    }
    return names;
}

class PulseRecorder : public testing::Test {
protected:
    SoundServer server;
    QTemporaryDir folder;
    const FileURL url { folder.filePath(QStringLiteral("a.wav")) };
    PulseConnection connection;
    SndFileStore audioFiles;
    PulseFileRecorderFactory factory { { connection, audioFiles } };
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Pulse, AudioEngineContract, testing::Values(&makePulse));

TEST_F(PulseRecorder, WritesWhatIsSpokenAndMeasuresIt) {
    const auto recorder = factory.make(url, RecordingSettings {});
    EXPECT_EQ(recorder->averagePower(), -120.0F);
    ASSERT_TRUE(recorder->prepareToRecord());
    ASSERT_TRUE(recorder->record());
    EXPECT_EQ(recorder->averagePower(), -120.0F);
    {
        int frame = 0;
        const Speech speech([&] {
            return 0.5F * float(std::sin(2 * std::numbers::pi * 440 * double(frame++ % 48000) / 48000));
        });
        // A sine of half of full scale.
        EXPECT_TRUE(waitUntil([&] { return std::fabs(recorder->averagePower() + 9.03F) < 0.5F; }));
    }
    EXPECT_TRUE(waitUntil([&] { return recorder->averagePower() < -100.0F; }));
    recorder->stop();

    SF_INFO info {};
    SNDFILE *file = sf_open(QFile::encodeName(url.path()).constData(), SFM_READ, &info);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(info.format, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    EXPECT_EQ(info.samplerate, 16000);
    EXPECT_EQ(info.channels, 1);
    std::vector<float> samples(size_t(info.frames));
    sf_readf_float(file, samples.data(), info.frames);
    sf_close(file);
    EXPECT_NEAR(*std::max_element(samples.begin(), samples.end()), 0.5F, 0.05F);
}

TEST_F(PulseRecorder, StopIsHarmlessAtAnyTime) {
    const auto recorder = factory.make(url, RecordingSettings {});
    recorder->stop();
    ASSERT_TRUE(recorder->record());
    recorder->stop();
    recorder->stop();
    SF_INFO info {};
    SNDFILE *file = sf_open(QFile::encodeName(url.path()).constData(), SFM_READ, &info);
    ASSERT_NE(file, nullptr);
    sf_close(file);
}

TEST_F(PulseRecorder, CannotStartWithoutAMicrophoneOrAFolder) {
    server.removeMicrophone();
    const auto recorder = factory.make(url, RecordingSettings {});
    EXPECT_TRUE(recorder->prepareToRecord());
    EXPECT_FALSE(recorder->record());
    EXPECT_FALSE(QFile::exists(url.path())) << "a recording of nothing was left behind";
    const FileURL nowhere(folder.filePath(QStringLiteral("missing/a.wav")));
    const auto homeless = factory.make(nowhere, RecordingSettings {});
    EXPECT_FALSE(homeless->prepareToRecord());
    EXPECT_FALSE(homeless->record());
}

TEST_F(PulseRecorder, AServerThatGoesLeavesAReadableFileAndSilence) {
    const auto recorder = factory.make(url, RecordingSettings {});
    ASSERT_TRUE(recorder->record());
    {
        const Speech speech([] { return 0.5F; });
        EXPECT_TRUE(waitUntil([&] { return recorder->averagePower() > -10.0F; }));
        server.kill();
    }
    EXPECT_TRUE(waitUntil([&] { return recorder->averagePower() == -120.0F; }));
    recorder->stop();
    SF_INFO info {};
    SNDFILE *file = sf_open(QFile::encodeName(url.path()).constData(), SFM_READ, &info);
    ASSERT_NE(file, nullptr);
    sf_close(file);
    EXPECT_GT(info.frames, 0);
}

TEST(PulseConnection, NamesItsThreadAndNotThatOfTheCaller) {
    SoundServer server;
    const QByteArray own = threadNames().constFirst();
    PulseConnection connection;
    EXPECT_TRUE(waitUntil([] { return threadNames().count("Tolmi.Audio") == 1; }));
    EXPECT_EQ(threadNames().constFirst(), own);
}

TEST(PulseMicrophonePermission, IsThereUnlessTheServerRefuses) {
    SoundServer server;
    VirtualClock clock;
    PulseConnection connection;
    PulseMicrophonePermission permission(connection, clock);
    EXPECT_EQ(permission.status(), AuthorizationStatus::Authorized);
    std::optional<bool> answer;
    permission.requestAccess([&](bool isGranted) { answer = isGranted; });
    EXPECT_EQ(answer, std::nullopt);
    clock.runPosted();
    EXPECT_EQ(answer, true);
    const std::string listOutputs = "list source-outputs";
    EXPECT_FALSE(server.tell(listOutputs).contains("Dictation"));
    PulseAudioEngine engine(connection);
    engine.start();
    EXPECT_TRUE(server.tell(listOutputs).contains("Dictation"));
    server.kill();
    EXPECT_EQ(permission.status(), AuthorizationStatus::Authorized);
}

TEST(PulseMicrophonePermission, ARefusalIsSeenAndTakenBack) {
    SoundServer server;
    const std::string port = std::to_string(freePort());
    server.tell("load-module module-native-protocol-tcp listen=127.0.0.1 port=" + port);
    const QByteArray local = qgetenv("PULSE_SERVER");
    QTemporaryDir folder;
    QFile cookie(folder.filePath(QStringLiteral("cookie")));
    ASSERT_TRUE(cookie.open(QIODevice::WriteOnly));
    cookie.write(QByteArray(256, 'x'));
    cookie.close();
    qputenv("PULSE_COOKIE", QFile::encodeName(cookie.fileName()));
    qputenv("PULSE_SERVER", "tcp:127.0.0.1:" + QByteArray::fromStdString(port));

    VirtualClock clock;
    PulseConnection connection;
    PulseMicrophonePermission permission(connection, clock);
    EXPECT_TRUE(waitUntil([&] { return permission.status() == AuthorizationStatus::Denied; }));
    PulseAudioEngine engine(connection);
    try {
        engine.start();
        ADD_FAILURE() << "no error";
    } catch (const SystemError &error) {
        EXPECT_EQ(error.errorDescription(),
            "The sound server refuses access to the microphone. Allow it, then try again.");
    }
    std::optional<bool> answer;
    permission.requestAccess([&](bool isGranted) { answer = isGranted; });
    clock.runPosted();
    EXPECT_EQ(answer, false);

    qunsetenv("PULSE_COOKIE");
    qputenv("PULSE_SERVER", local);
    EXPECT_TRUE(waitUntil([&] { return permission.status() == AuthorizationStatus::Authorized; }));
}
