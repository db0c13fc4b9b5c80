#include "Platform/Desktop/SndFileStore.h"

#include "Foundation/Error.h"
#include "Support/FakeAudioFileStore.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <numeric>

namespace {
/// The content of a sound file as read by another program.
struct Sound {
    SF_INFO info {};
    std::vector<float> samples;
};

Sound readSound(const FileURL &url) {
    Sound sound;
    SNDFILE *file = sf_open(QFile::encodeName(url.path()).constData(), SFM_READ, &sound.info);
    if (!file)
        return sound;
    sound.samples.resize(size_t(sound.info.frames * sound.info.channels));
    sf_readf_float(file, sound.samples.data(), sound.info.frames);
    sf_close(file);
    return sound;
}

std::vector<float> counting(int first, size_t count) {
    std::vector<float> samples(count);
    std::iota(samples.begin(), samples.end(), float(first));
    return samples;
}

AudioBuffer monoBuffer(std::vector<float> samples, double sampleRate = 48000) {
    const auto frameLength = qint64(samples.size());
    return { { sampleRate, 1 }, { std::move(samples) }, frameLength };
}

/// An implementation under test, and how to read what it wrote.
class StoreSubject {
public:
    virtual ~StoreSubject() = default;
    virtual AudioFileStore &store() = 0;
    virtual FileURL root() = 0;
    virtual std::vector<float> samples(const FileURL &url) = 0;
};

class FakeSubject final : public StoreSubject {
public:
    AudioFileStore &store() override { return m_store; }
    FileURL root() override { return FileURL(QStringLiteral("/sounds")); }
    std::vector<float> samples(const FileURL &) override { return m_store.files.back()->samples; }

private:
    FakeAudioFileStore m_store;
};

class RealSubject final : public StoreSubject {
public:
    AudioFileStore &store() override { return m_store; }
    FileURL root() override { return FileURL(m_folder.path()); }
    std::vector<float> samples(const FileURL &url) override { return readSound(url).samples; }

private:
    QTemporaryDir m_folder;
    SndFileStore m_store;
};

template <typename Subject>
std::unique_ptr<StoreSubject> make() {
    return std::make_unique<Subject>();
}

class AudioFileStoreContract : public testing::TestWithParam<std::unique_ptr<StoreSubject> (*)()> {
protected:
    const std::unique_ptr<StoreSubject> subject = GetParam()();
    const FileURL url = subject->root().appendingPathComponent(QStringLiteral("a.wav"));
};

INSTANTIATE_TEST_SUITE_P(Kinds, AudioFileStoreContract,
    testing::Values(&make<FakeSubject>, &make<RealSubject>),
    [](const auto &info) { return info.index == 0 ? "Fake" : "SndFile"; });

TEST_P(AudioFileStoreContract, WrittenSoundIsReadableAtOnce) {
    const auto file = subject->store().create(url, { 48000, 1 });
    EXPECT_TRUE(subject->samples(url).empty());
    file->write(monoBuffer({ 0.5F, -0.25F }));
    file->write(monoBuffer({}));
    file->write(monoBuffer({ 2.0F }));
    EXPECT_EQ(subject->samples(url), (std::vector<float> { 0.5F, -0.25F, 2.0F }));
}

TEST_P(AudioFileStoreContract, AnExistingFileIsReplaced) {
    subject->store().create(url, { 48000, 1 })->write(monoBuffer(counting(0, 100)));
    subject->store().create(url, { 48000, 1 })->write(monoBuffer({ 1.0F }));
    EXPECT_EQ(subject->samples(url), (std::vector<float> { 1.0F }));
}

TEST_P(AudioFileStoreContract, SoundOfAnotherFormatIsRejected) {
    const auto file = subject->store().create(url, { 48000, 1 });
    EXPECT_THROW(file->write(monoBuffer({ 1.0F }, 44100)), SystemError);
    EXPECT_THROW(file->write({ { 48000, 2 }, { { 1.0F }, { 1.0F } }, 1 }), SystemError);
    EXPECT_THROW(file->write({ { 48000, 1 }, {}, 4 }), SystemError);
    EXPECT_TRUE(subject->samples(url).empty());
}

class SndFileStoreTest : public testing::Test {
protected:
    static mode_t modeOf(const FileURL &url) {
        struct stat status { };
        stat(QFile::encodeName(url.path()).constData(), &status);
        return status.st_mode & 07777;
    }

    QTemporaryDir folder;
    const FileURL url = FileURL(folder.path()).appendingPathComponent(QStringLiteral("ș ț.wav"));
    SndFileStore store;
};

/// Limits the file size of the process, so that writes fail as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        m_formerHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit { bytes, m_former.rlim_max };
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_formerHandler);
    }

private:
    rlimit m_former {};
    void (*m_formerHandler)(int) = nullptr;
};
} // namespace

TEST_F(SndFileStoreTest, WritesFloatsInTheFormatAskedFor) {
    store.create(url, { 44100, 2 })->write({ { 44100, 2 }, { { 0.5F, 3.0F }, { -0.5F, -3.0F } }, 2 });
    const Sound sound = readSound(url);
    EXPECT_EQ(sound.info.format, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    EXPECT_EQ(sound.info.samplerate, 44100);
    EXPECT_EQ(sound.info.channels, 2);
    EXPECT_EQ(sound.samples, (std::vector<float> { 0.5F, -0.5F, 3.0F, -3.0F }));
}

TEST_F(SndFileStoreTest, WritesIntegersClippedToFullScale) {
    const RecordingSettings settings;
    store.createInteger(url, settings)->write(monoBuffer({ 0.0F, 0.5F, 1.5F, -1.5F }, 16000));
    const Sound sound = readSound(url);
    EXPECT_EQ(sound.info.format, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    EXPECT_EQ(sound.info.samplerate, 16000);
    EXPECT_EQ(sound.info.channels, 1);
    ASSERT_EQ(sound.samples.size(), 4U);
    EXPECT_EQ(sound.samples[0], 0.0F);
    EXPECT_NEAR(sound.samples[1], 0.5F, 1.0F / 32768);
    EXPECT_NEAR(sound.samples[2], 1.0F, 1.0F / 32768);
    EXPECT_EQ(sound.samples[3], -1.0F);
}

TEST_F(SndFileStoreTest, OtherBitDepthsAreRejected) {
    EXPECT_THROW(store.createInteger(url, { 16000, 1, 24 }), SystemError);
    EXPECT_FALSE(QFile::exists(url.path()));
}

TEST_F(SndFileStoreTest, TheFileIsPrivateWhateverTheUmask) {
    for (const mode_t mask : { 0000, 0022, 0277 }) {
        const FileURL each
            = FileURL(folder.path()).appendingPathComponent(QStringLiteral("%1.wav").arg(mask));
        const mode_t former = umask(mask);
        store.create(each, { 48000, 1 });
        umask(former);
        EXPECT_EQ(modeOf(each), 0600U);
    }
}

TEST_F(SndFileStoreTest, AReplacedFileBecomesPrivate) {
    QFile file(url.path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
    store.create(url, { 48000, 1 });
    EXPECT_EQ(modeOf(url), 0600U);
}

TEST_F(SndFileStoreTest, AnImpossiblePathReportsTheSystemsError) {
    const std::pair<QString, QString> rows[] = {
        { folder.path() + QStringLiteral("/missing/a.wav"), QStringLiteral("No such file or directory: ") },
        { folder.path(), QStringLiteral("Is a directory: ") },
    };
    for (const auto &[path, text] : rows) {
        try {
            store.create(FileURL(path), { 48000, 1 });
            ADD_FAILURE() << path.toStdString();
        } catch (const SystemError &error) {
            EXPECT_EQ(error.errorDescription(), text + path);
        }
    }
}

TEST_F(SndFileStoreTest, AKilledWriterLeavesAValidFile) {
    const auto writeAndDie = [this](int bufferCount) {
        const auto file = store.create(url, { 48000, 1 });
        for (int buffer = 0; buffer < bufferCount; ++buffer)
            file->write(monoBuffer(counting(buffer * 1024, 1024)));
        std::raise(SIGKILL);
    };
    EXPECT_EXIT(writeAndDie(50), testing::KilledBySignal(SIGKILL), "");
    EXPECT_EQ(readSound(url).samples, counting(0, 50 * 1024));
    EXPECT_EXIT(writeAndDie(0), testing::KilledBySignal(SIGKILL), "");
    EXPECT_EQ(readSound(url).info.format, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    EXPECT_EQ(readSound(url).info.frames, 0);
}

TEST_F(SndFileStoreTest, AFullDiskIsAnErrorAndLaterSoundStaysAligned) {
    const auto file = store.create(url, { 48000, 1 });
    file->write(monoBuffer(counting(0, 1024)));
    {
        // Not a whole number of samples.
        const FileSizeLimit limit(6001);
        try {
            file->write(monoBuffer(counting(1024, 1024)));
            ADD_FAILURE() << "no error";
        } catch (const SystemError &error) {
            EXPECT_EQ(error.errorDescription(), QStringLiteral("File too large: ") + url.path());
        }
        EXPECT_THROW(file->write(monoBuffer(counting(1024, 1024))), SystemError);
    }
    file->write(monoBuffer(counting(5000, 1024)));
    const std::vector<float> samples = readSound(url).samples;
    ASSERT_GE(samples.size(), 2048U);
    EXPECT_EQ(std::vector<float>(samples.begin(), samples.begin() + 1024), counting(0, 1024));
    EXPECT_EQ(std::vector<float>(samples.end() - 1024, samples.end()), counting(5000, 1024));
}

TEST_F(SndFileStoreTest, AFullDiskAtCreationIsAnError) {
    const FileSizeLimit limit(0);
    EXPECT_THROW(store.create(url, { 48000, 1 }), SystemError);
}
