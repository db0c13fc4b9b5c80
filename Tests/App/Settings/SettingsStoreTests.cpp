#include "TolmiApp/Settings/SettingsStore.h"

#include "Platform/UserDefaults.h"
#include "Support/FakeFileManager.h"
#include "Support/FakeUserDefaults.h"
#include "Support/Print.h"
#include "Support/VirtualClock.h"
#include "TolmiApp/Settings/ProfileAvatarPreset.h"
#include "TolmiCore/OllamaConfiguration.h"

#include <QMetaProperty>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

using Write = FakeUserDefaults::Write;

namespace {
const QString firstNow = QStringLiteral("2026-01-01T00:00:00.000Z");
const QString largeModel = QStringLiteral("/models/ggml-large-v3.bin");
const QString baseModel = QStringLiteral("/models/ggml-base.en.bin");
const QString defaultModel = QStringLiteral("/home/user/.models/ggml-large-v3.bin");
const QString defaultBinary = QStringLiteral("/home/user/.local/share/Tolmi/tools/whisper-cli");
const QString applicationFolder = QStringLiteral("/home/user/.local/share/Tolmi");

QString q(const char *utf8) {
    return QString::fromUtf8(utf8);
}

DefaultsValue stored(const char *utf8) {
    return q(utf8);
}

// The value of any published field as a string, so that one table can contain them all.
QString described(const QString &text) {
    return text;
}
QString described(const std::optional<QString> &text) {
    return text.value_or(QStringLiteral("(none)"));
}
QString described(bool truth) {
    return truth ? QStringLiteral("true") : QStringLiteral("false");
}
QString described(qint64 number) {
    return QString::number(number);
}
QString described(double number) {
    return QString::number(number);
}
template <typename Enum>
requires std::is_enum_v<Enum> QString described(Enum value) {
    return rawValue(value);
}

using Reader = QString (*)(const SettingsStore &);

template <auto getter>
QString read(const SettingsStore &store) {
    return described((store.*getter)());
}

bool isUppercaseUuid(const QString &text) {
    static const QRegularExpression form(
        QStringLiteral("^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}$"));
    return form.match(text).hasMatch();
}

class SettingsStoreTest : public testing::Test {
protected:
    std::unique_ptr<SettingsStore> makeStore() {
        return std::make_unique<SettingsStore>(defaults, files, clock, bundle);
    }

    /// A store whose defaults contain only this value.
    std::unique_ptr<SettingsStore> makeStore(const char *key, const std::optional<DefaultsValue> &value) {
        defaults.values.clear();
        if (value)
            defaults.values[q(key)] = *value;
        return makeStore();
    }

    void addAvatarFiles() {
        files.files[applicationFolder + q("/profile/avatar.png")];
        files.files[applicationFolder + q("/profile/thumbnail.png")];
    }

    void storeAvatarPaths(const char *image, const char *thumbnail) {
        defaults.values[imageKey] = q(image);
        defaults.values[thumbnailKey] = q(thumbnail);
    }

    const QString imageKey = q("tolmi.profile.avatarImageRelativePath");
    const QString thumbnailKey = q("tolmi.profile.avatarThumbnailRelativePath");
    FakeUserDefaults defaults;
    FakeFileManager files;
    VirtualClock clock;
    BundleInfo bundle;
};
} // namespace

TEST_F(SettingsStoreTest, LoadsEachKey) {
    files.addExecutable(q("/bin/whisper"));
    files.files[q("/m.bin")];
    const double infinity = std::numeric_limits<double>::infinity();
    struct Load {
        std::optional<DefaultsValue> value;
        QString expected;
    };
    const struct {
        const char *key;
        Reader reader;
        std::vector<Load> loads;
    } cases[] {
        { "tolmi.whisperBinaryPath", read<&SettingsStore::whisperBinaryPath>,
            { { {}, defaultBinary }, { stored("/bin/whisper"), q("/bin/whisper") },
                { stored("/m.bin"), defaultBinary }, { stored(""), defaultBinary },
                { true, defaultBinary } } },
        { "tolmi.modelPath", read<&SettingsStore::modelPath>,
            { { {}, defaultModel }, { stored("/m.bin"), q("/m.bin") }, { 1.5, defaultModel } } },
        { "tolmi.language", read<&SettingsStore::language>,
            { { {}, q("ro") }, { stored("Klingon"), q("Klingon") }, { stored(""), q("") },
                { qint64(3), q("ro") } } },
        { "tolmi.performanceMode", read<&SettingsStore::performanceMode>,
            { { {}, q("faster") }, { stored("maxQuality"), q("maxQuality") },
                { stored("MAXQUALITY"), q("faster") }, { stored("maxquality"), q("faster") },
                { false, q("faster") } } },
        { "tolmi.transcriptionEngine", read<&SettingsStore::transcriptionEngine>,
            { { {}, q("whisperCLI") }, { stored("cloud"), q("whisperCLI") } } },
        { "tolmi.processingTransitionSound", read<&SettingsStore::processingTransitionSound>,
            { { {}, q("hero") }, { stored("ping"), q("ping") }, { stored("Ping"), q("hero") } } },
        { "tolmi.processingTransitionSoundVolume", read<&SettingsStore::processingTransitionSoundVolume>,
            { { {}, q("0.45") }, { 0.2, q("0.2") }, { qint64(1), q("1") }, { 7.5, q("1") },
                { -infinity, q("0") }, { stored("0.2"), q("0.45") } } },
        { "tolmi.processingTransitionPreviewVolume", read<&SettingsStore::processingTransitionPreviewVolume>,
            { { {}, q("0.7") }, { -0.1, q("0") }, { true, q("0.7") } } },
        { "tolmi.uiLanguage", read<&SettingsStore::uiLanguage>,
            { { {}, q("ro") }, { stored("en"), q("en") }, { stored("EN"), q("en") },
                { stored("de"), q("ro") } } },
        { "tolmi.appearance", read<&SettingsStore::appearance>,
            { { {}, q("dark") }, { stored("LIGHT"), q("light") }, { stored("System"), q("system") },
                { stored("sepia"), q("dark") }, { qint64(1), q("dark") } } },
        { "tolmi.profileDisplayName", read<&SettingsStore::profileDisplayName>,
            { { {}, q("User") }, { stored("  Ana \n\t Pop "), q("Ana Pop") }, { stored(" \n "), q("User") },
                { qint64(7), q("User") } } },
        { "tolmi.profileAvatarID", read<&SettingsStore::profileAvatarID>,
            { { {}, q("person.crop.circle.fill") }, { stored("sparkles"), q("sparkles") },
                { stored("Sparkles"), q("person.crop.circle.fill") } } },
        { "tolmi.profile.id", read<&SettingsStore::profileID>,
            { { stored(" kept as it is "), q(" kept as it is ") } } },
        { "tolmi.profile.updatedAt", read<&SettingsStore::profileUpdatedAt>,
            { { {}, firstNow }, { stored("yesterday"), q("yesterday") }, { stored(""), firstNow },
                { 4.5, firstNow } } },
        { "tolmi.profile.syncVersion", read<&SettingsStore::profileSyncVersion>,
            { { {}, q("1") }, { qint64(12), q("12") }, { 12.0, q("12") }, { 12.5, q("1") },
                { qint64(0), q("1") }, { qint64(-5), q("1") }, { stored("12"), q("1") } } },
        { "tolmi.profile.avatarImageRelativePath", read<&SettingsStore::profileAvatarImageRelativePath>,
            { { {}, q("(none)") }, { qint64(1), q("(none)") } } },
        { "tolmi.profile.avatarThumbnailRelativePath",
            read<&SettingsStore::profileAvatarThumbnailRelativePath>, { { {}, q("(none)") } } },
        { "tolmi.onboarding.completed", read<&SettingsStore::hasCompletedOnboarding>,
            { { {}, q("false") }, { true, q("true") }, { qint64(1), q("true") }, { qint64(2), q("false") },
                { stored("true"), q("false") } } },
        { "tolmi.onboarding.skippedAt", read<&SettingsStore::onboardingSkippedAt>,
            { { {}, q("(none)") }, { stored("once"), q("once") }, { true, q("(none)") } } },
        { "tolmi.onboarding.version", read<&SettingsStore::onboardingVersion>,
            { { {}, q("1") }, { qint64(2), q("2") }, { qint64(-2), q("1") }, { stored("2"), q("1") } } },
        { "tolmi.onboarding.lastStep", read<&SettingsStore::onboardingLastStep>,
            { { {}, q("profile") }, { stored("dictationTest"), q("dictationTest") },
                { stored("dictationtest"), q("profile") } } },
        { "tolmi.refinementEnabled", read<&SettingsStore::refinementEnabled>,
            { { {}, q("true") }, { false, q("false") }, { stored("no"), q("true") } } },
        { "tolmi.ollamaModel", read<&SettingsStore::ollamaModel>,
            { { {}, q("llama3.2:3b") }, { stored(""), q("") }, { qint64(3), q("llama3.2:3b") } } },
        { "tolmi.ollamaEndpoint", read<&SettingsStore::ollamaEndpoint>,
            { { {}, q("http://localhost:11434") }, { stored("not an address"), q("not an address") } } },
        { "tolmi.ollamaTimeout", read<&SettingsStore::ollamaTimeout>,
            { { {}, q("10") }, { -3.5, q("-3.5") }, { qint64(25), q("25") }, { stored("25"), q("10") } } },
        { "tolmi.ollamaSystemPrompt", read<&SettingsStore::ollamaSystemPrompt>,
            { { {}, OllamaConfiguration::defaultSystemPrompt }, { stored("Be brief."), q("Be brief.") } } },
        { "tolmi.audioRetentionHours", read<&SettingsStore::audioRetentionHours>,
            { { {}, q("24") }, { qint64(48), q("48") }, { qint64(0), q("1") }, { stored("48"), q("24") } } },
        { "tolmi.audioRetentionMaxMB", read<&SettingsStore::audioRetentionMaxMB>,
            { { {}, q("2048") }, { qint64(-1), q("1") }, { 0.5, q("2048") } } },
    };
    for (const auto &[key, reader, loads] : cases) {
        for (const auto &[value, expected] : loads)
            EXPECT_EQ(reader(*makeStore(key, value)), expected) << key;
    }
}

TEST_F(SettingsStoreTest, CreatesAProfileIdIfThereIsNone) {
    EXPECT_TRUE(isUppercaseUuid(makeStore("tolmi.profile.id", {})->profileID()));
    EXPECT_TRUE(isUppercaseUuid(makeStore("tolmi.profile.id", stored(" \n"))->profileID()));
    EXPECT_TRUE(isUppercaseUuid(makeStore("tolmi.profile.id", true)->profileID()));
    const auto store = makeStore();
    EXPECT_EQ(defaults.values[q("tolmi.profile.id")], DefaultsValue(store->profileID()));
    EXPECT_EQ(makeStore()->profileID(), store->profileID());
}

TEST_F(SettingsStoreTest, StoresEachAssignment) {
    const auto store = makeStore();
    const struct {
        const char *key;
        std::function<void(SettingsStore &)> assign;
        DefaultsValue expected;
    } cases[] {
        { "tolmi.whisperBinaryPath", [](auto &s) { s.setWhisperBinaryPath(q("/nowhere")); },
            stored("/nowhere") },
        { "tolmi.modelPath", [](auto &s) { s.setModelPath(q("")); }, stored("") },
        { "tolmi.language", [](auto &s) { s.setLanguage(q("en")); }, stored("en") },
        { "tolmi.performanceMode",
            [](auto &s) { s.setPerformanceMode(DictationPerformanceMode::MaxQuality); },
            stored("maxQuality") },
        { "tolmi.transcriptionEngine",
            [](auto &s) { s.setTranscriptionEngine(TranscriptionEngineOption::WhisperCLI); },
            stored("whisperCLI") },
        { "tolmi.processingTransitionSound",
            [](auto &s) { s.setProcessingTransitionSound(ProcessingTransitionSound::None); },
            stored("none") },
        { "tolmi.processingTransitionSoundVolume",
            [](auto &s) { s.setProcessingTransitionSoundVolume(0.25); }, 0.25 },
        { "tolmi.processingTransitionSoundVolume", [](auto &s) { s.setProcessingTransitionSoundVolume(1.5); },
            1.0 },
        { "tolmi.processingTransitionSoundVolume",
            [](auto &s) { s.setProcessingTransitionSoundVolume(std::nan("")); }, 0.0 },
        { "tolmi.processingTransitionPreviewVolume",
            [](auto &s) { s.setProcessingTransitionPreviewVolume(-0.2); }, 0.0 },
        { "tolmi.processingTransitionPreviewVolume",
            [](auto &s) { s.setProcessingTransitionPreviewVolume(1); }, 1.0 },
        { "tolmi.uiLanguage", [](auto &s) { s.setUiLanguage(AppLanguage::English); }, stored("en") },
        { "tolmi.appearance", [](auto &s) { s.setAppearance(AppAppearance::System); }, stored("system") },
        { "tolmi.profileDisplayName", [](auto &s) { s.setProfileDisplayName(q(" Ana  Pop")); },
            stored("Ana Pop") },
        { "tolmi.profileAvatarID", [](auto &s) { s.setProfileAvatarID(q("waveform.circle.fill")); },
            stored("waveform.circle.fill") },
        { "tolmi.profileAvatarID", [](auto &s) { s.setProfileAvatarID(q("?")); },
            stored("person.crop.circle.fill") },
        { "tolmi.profile.id", [](auto &s) { s.setProfileID(q(" id\n")); }, stored("id") },
        { "tolmi.profile.updatedAt", [](auto &s) { s.setProfileUpdatedAt(q("then")); }, stored("then") },
        { "tolmi.profile.updatedAt", [](auto &s) { s.setProfileUpdatedAt(q("")); }, firstNow },
        { "tolmi.profile.syncVersion", [](auto &s) { s.setProfileSyncVersion(9); }, qint64(9) },
        { "tolmi.profile.syncVersion", [](auto &s) { s.setProfileSyncVersion(-9); }, qint64(1) },
        { "tolmi.profile.avatarImageRelativePath",
            [](auto &s) { s.setProfileAvatarImageRelativePath(q("a.png")); }, stored("a.png") },
        { "tolmi.profile.avatarThumbnailRelativePath",
            [](auto &s) { s.setProfileAvatarThumbnailRelativePath(q("b.png")); }, stored("b.png") },
        { "tolmi.onboarding.completed", [](auto &s) { s.setHasCompletedOnboarding(true); }, true },
        { "tolmi.onboarding.skippedAt", [](auto &s) { s.setOnboardingSkippedAt(q("then")); },
            stored("then") },
        { "tolmi.onboarding.version", [](auto &s) { s.setOnboardingVersion(3); }, qint64(3) },
        { "tolmi.onboarding.version", [](auto &s) { s.setOnboardingVersion(0); }, qint64(1) },
        { "tolmi.onboarding.lastStep", [](auto &s) { s.setOnboardingLastStep(OnboardingStep::Permissions); },
            stored("permissions") },
        { "tolmi.refinementEnabled", [](auto &s) { s.setRefinementEnabled(false); }, false },
        { "tolmi.ollamaModel", [](auto &s) { s.setOllamaModel(q("m")); }, stored("m") },
        { "tolmi.ollamaEndpoint", [](auto &s) { s.setOllamaEndpoint(q("e")); }, stored("e") },
        { "tolmi.ollamaTimeout", [](auto &s) { s.setOllamaTimeout(-1); }, -1.0 },
        { "tolmi.ollamaSystemPrompt", [](auto &s) { s.setOllamaSystemPrompt(q("p")); }, stored("p") },
    };
    for (const auto &[key, assign, expected] : cases) {
        defaults.writes.clear();
        assign(*store);
        ASSERT_FALSE(defaults.writes.empty()) << key;
        EXPECT_EQ(defaults.writes.front(), (Write { q(key), expected })) << key;
    }
}

TEST_F(SettingsStoreTest, StoresNaNWhereEveryNumberIsAllowed) {
    const auto store = makeStore();
    defaults.writes.clear();
    store->setOllamaTimeout(std::nan(""));
    EXPECT_TRUE(std::isnan(store->ollamaTimeout()));
    EXPECT_EQ(defaults.writes.size(), 1u);
}

TEST_F(SettingsStoreTest, RemovesTheKeyOfAnAbsentValue) {
    const auto store = makeStore();
    store->setOnboardingSkippedAt(q("then"));
    store->setProfileAvatarImageRelativePath(q("a.png"));
    store->setProfileAvatarThumbnailRelativePath(q("b.png"));
    store->setOnboardingSkippedAt(std::nullopt);
    store->setProfileAvatarImageRelativePath(std::nullopt);
    store->setProfileAvatarThumbnailRelativePath(std::nullopt);
    for (const char *key : { "tolmi.onboarding.skippedAt", "tolmi.profile.avatarImageRelativePath",
             "tolmi.profile.avatarThumbnailRelativePath" })
        EXPECT_EQ(defaults.values.count(q(key)), 0u) << key;
}

TEST_F(SettingsStoreTest, WritesBackInAFixedOrder) {
    const auto store = makeStore();
    const std::vector<Write> expected {
        // the repair, whose assignments are stored like any other
        { q("tolmi.profile.syncVersion"), qint64(1) },
        { q("tolmi.onboarding.version"), qint64(1) },
        // the write-back
        { q("tolmi.whisperBinaryPath"), defaultBinary },
        { q("tolmi.modelPath"), defaultModel },
        { q("tolmi.performanceMode"), stored("faster") },
        { q("tolmi.transcriptionEngine"), stored("whisperCLI") },
        { q("tolmi.processingTransitionSound"), stored("hero") },
        { q("tolmi.processingTransitionSoundVolume"), 0.45 },
        { q("tolmi.processingTransitionPreviewVolume"), 0.7 },
        { q("tolmi.uiLanguage"), stored("ro") },
        { q("tolmi.appearance"), stored("dark") },
        { q("tolmi.profileDisplayName"), stored("User") },
        { q("tolmi.profileAvatarID"), stored("person.crop.circle.fill") },
        { q("tolmi.profile.id"), store->profileID() },
        { q("tolmi.profile.updatedAt"), firstNow },
        { q("tolmi.profile.syncVersion"), qint64(1) },
        { imageKey, std::nullopt },
        { thumbnailKey, std::nullopt },
        { q("tolmi.onboarding.completed"), false },
        { q("tolmi.onboarding.skippedAt"), std::nullopt },
        { q("tolmi.onboarding.version"), qint64(1) },
        { q("tolmi.onboarding.lastStep"), stored("profile") },
        { q("tolmi.audioRetentionHours"), qint64(24) },
        { q("tolmi.audioRetentionMaxMB"), qint64(2048) },
    };
    ASSERT_EQ(defaults.writes.size(), expected.size());
    for (size_t index = 0; index < expected.size(); ++index)
        EXPECT_EQ(defaults.writes[index], expected[index]) << expected[index].key.toStdString();
}

TEST_F(SettingsStoreTest, LeavesLanguageAndRefinementAbsentUntilTheyChange) {
    const auto store = makeStore();
    for (const char *key : { "tolmi.language", "tolmi.refinementEnabled", "tolmi.ollamaModel",
             "tolmi.ollamaEndpoint", "tolmi.ollamaTimeout", "tolmi.ollamaSystemPrompt" })
        EXPECT_EQ(defaults.values.count(q(key)), 0u) << key;
    EXPECT_EQ(defaults.values[q("tolmi.audioRetentionHours")], DefaultsValue(qint64(24)));
    EXPECT_EQ(defaults.values[q("tolmi.audioRetentionMaxMB")], DefaultsValue(qint64(2048)));
    store->setRefinementEnabled(true);
    EXPECT_EQ(defaults.values[q("tolmi.refinementEnabled")], DefaultsValue(true));
}

TEST_F(SettingsStoreTest, WritesRepairedValuesBack) {
    defaults.values = {
        { q("tolmi.processingTransitionSoundVolume"), 9.0 },
        { q("tolmi.appearance"), stored("LIGHT") },
        { q("tolmi.performanceMode"), stored("MAXQUALITY") },
        { q("tolmi.profileDisplayName"), qint64(5) },
        { q("tolmi.profile.syncVersion"), qint64(-5) },
        { q("tolmi.audioRetentionHours"), stored("soon") },
    };
    makeStore();
    EXPECT_EQ(defaults.values[q("tolmi.processingTransitionSoundVolume")], DefaultsValue(1.0));
    EXPECT_EQ(defaults.values[q("tolmi.appearance")], stored("light"));
    EXPECT_EQ(defaults.values[q("tolmi.performanceMode")], stored("faster"));
    EXPECT_EQ(defaults.values[q("tolmi.profileDisplayName")], stored("User"));
    EXPECT_EQ(defaults.values[q("tolmi.profile.syncVersion")], DefaultsValue(qint64(1)));
    EXPECT_EQ(defaults.values[q("tolmi.audioRetentionHours")], DefaultsValue(qint64(24)));
}

TEST_F(SettingsStoreTest, MigratesTheModelPath) {
    const QString elsewhere = q("/elsewhere/ggml-small.bin");
    const struct {
        const char *name;
        std::optional<QString> storedPath;
        std::vector<QString> existing;
        QString expected;
        bool isStoredAtOnce;
    } cases[] {
        { "nothing stored", {}, { largeModel, baseModel }, defaultModel, false },
        { "the large model alone", baseModel, { largeModel }, largeModel, true },
        { "the large model beside the base one", baseModel, { largeModel, baseModel }, largeModel, true },
        { "the base model alone", baseModel, { baseModel, defaultModel }, baseModel, false },
        { "another model beside the large one", q("/models/ggml-base.bin"),
            { largeModel, q("/models/ggml-base.bin") }, q("/models/ggml-base.bin"), false },
        { "the name in capitals", q("/models/GGML-BASE.EN.BIN"),
            { largeModel, q("/models/GGML-BASE.EN.BIN") }, q("/models/GGML-BASE.EN.BIN"), false },
        { "a file that is gone, with a default", elsewhere, { defaultModel }, defaultModel, true },
        { "the base model gone, with a default", baseModel, { defaultModel }, defaultModel, true },
        { "a file that is gone, without a default", elsewhere, {}, elsewhere, false },
        { "an empty path", q(""), { defaultModel }, defaultModel, true },
    };
    for (const auto &[name, storedPath, existing, expected, isStoredAtOnce] : cases) {
        files.files.clear();
        for (const QString &path : existing)
            files.files[path];
        defaults.writes.clear();
        const auto store = makeStore(
            "tolmi.modelPath", storedPath ? std::optional<DefaultsValue>(*storedPath) : std::nullopt);
        EXPECT_EQ(store->modelPath(), expected) << name;
        EXPECT_EQ(defaults.values[q("tolmi.modelPath")], DefaultsValue(expected)) << name;
        const Write migration { q("tolmi.modelPath"), expected };
        EXPECT_EQ(defaults.writes.front() == migration, isStoredAtOnce) << name;
    }
}

TEST_F(SettingsStoreTest, SanitisesTheDisplayName) {
    const QString family = q("\U0001F468\u200D\U0001F469\u200D\U0001F467"); // one grapheme cluster
    const struct {
        QString name;
        QString expected;
    } cases[] {
        { q(""), q("User") },
        { q(" \t\r\n\u00A0"), q("User") },
        { q("\u0085\u2003"), q("User") },
        { q("Ana\n\n  Maria\t\u00A0Pop"), q("Ana Maria Pop") },
        { QString(60, u'x'), QString(40, u'x') },
        { family.repeated(60), family.repeated(40) },
        { QString(40, u'x'), QString(40, u'x') },
        // Truncation leaves a trailing blank, which the second run of the check removes.
        { QString(39, u'x') + q(" y"), QString(39, u'x') },
    };
    const auto store = makeStore();
    for (const auto &[name, expected] : cases) {
        store->setProfileDisplayName(name);
        EXPECT_EQ(store->profileDisplayName(), expected);
        EXPECT_EQ(defaults.values[q("tolmi.profileDisplayName")], DefaultsValue(expected));
    }
}

TEST_F(SettingsStoreTest, LoadsADisplayNameWithATrailingBlankUnchanged) {
    const auto store = makeStore("tolmi.profileDisplayName", QString(39, u'x') + q(" y"));
    EXPECT_EQ(store->profileDisplayName(), QString(39, u'x') + u' ');
}

TEST_F(SettingsStoreTest, CountsRealChangesOfTheProfile) {
    const auto store = makeStore();
    clock.shift(1.5);
    store->setProfileDisplayName(q("Ana"));
    EXPECT_EQ(store->profileSyncVersion(), 2);
    EXPECT_EQ(store->profileUpdatedAt(), q("2026-01-01T00:00:01.500Z"));
    store->setProfileAvatarID(q("sparkles"));
    EXPECT_EQ(store->profileSyncVersion(), 3);
    EXPECT_EQ(defaults.values[q("tolmi.profile.syncVersion")], DefaultsValue(qint64(3)));
    EXPECT_EQ(defaults.values[q("tolmi.profile.updatedAt")], DefaultsValue(q("2026-01-01T00:00:01.500Z")));

    clock.shift(1);
    store->setProfileDisplayName(q("  Ana "));
    store->setProfileAvatarID(q("sparkles"));
    store->setProfileAvatarImageRelativePath(std::nullopt);
    store->setProfileID(q("another"));
    store->setProfileUpdatedAt(q("then"));
    store->setLanguage(q("en"));
    EXPECT_EQ(store->profileSyncVersion(), 3);
    EXPECT_EQ(store->profileUpdatedAt(), q("then"));
}

TEST_F(SettingsStoreTest, CountsNoAssignmentOfWhatItHasLoaded) {
    addAvatarFiles();
    defaults.values[q("tolmi.profileDisplayName")] = q("Ana");
    defaults.values[q("tolmi.profileAvatarID")] = q("sparkles");
    storeAvatarPaths("profile/avatar.png", "profile/thumbnail.png");
    const std::function<void(SettingsStore &)> assignments[] {
        [](auto &store) { store.setProfileDisplayName(q("Ana")); },
        [](auto &store) { store.setProfileAvatarID(q("sparkles")); },
        [](auto &store) { store.setProfileAvatarImageRelativePath(q("profile/avatar.png")); },
        [](auto &store) { store.setProfileAvatarThumbnailRelativePath(q("profile/thumbnail.png")); },
    };
    for (const auto &assign : assignments) {
        const auto store = makeStore();
        assign(*store);
        EXPECT_EQ(store->profileSyncVersion(), 1);
    }
}

TEST_F(SettingsStoreTest, CountsANewAvatarOnce) {
    addAvatarFiles();
    const auto store = makeStore();
    defaults.writes.clear();
    store->setCustomAvatar(q("profile/avatar.png"), q("profile/thumbnail.png"));
    EXPECT_EQ(store->profileSyncVersion(), 2);
    const std::vector<Write> expected { { imageKey, stored("profile/avatar.png") },
        { thumbnailKey, stored("profile/thumbnail.png") }, { q("tolmi.profile.syncVersion"), qint64(2) },
        { q("tolmi.profile.updatedAt"), firstNow } };
    EXPECT_EQ(defaults.writes, expected);

    store->setCustomAvatar(q("profile/avatar.png"), q("profile/thumbnail.png"));
    EXPECT_EQ(store->profileSyncVersion(), 2);
    store->clearCustomAvatar();
    EXPECT_EQ(store->profileSyncVersion(), 3);
    store->clearCustomAvatar();
    EXPECT_EQ(store->profileSyncVersion(), 3);
}

TEST_F(SettingsStoreTest, RepairsAnAvatarWithoutCountingIt) {
    addAvatarFiles();
    const auto store = makeStore();
    store->setCustomAvatar(q("profile/avatar.png"), q("profile/thumbnail.png"));
    store->clearCustomAvatar(false);
    EXPECT_EQ(store->profileSyncVersion(), 2);
    EXPECT_EQ(store->profileAvatarImageRelativePath(), std::nullopt);

    // Later changes count again.
    store->setProfileDisplayName(q("Ana"));
    EXPECT_EQ(store->profileSyncVersion(), 3);
}

TEST_F(SettingsStoreTest, ResolvesTheAvatar) {
    addAvatarFiles();
    storeAvatarPaths("profile/avatar.png", "profile/thumbnail.png");
    const auto store = makeStore();
    EXPECT_EQ(store->resolvedCustomAvatarImageURL(), FileURL(applicationFolder + q("/profile/avatar.png")));
    EXPECT_EQ(
        store->resolvedCustomAvatarThumbnailURL(), FileURL(applicationFolder + q("/profile/thumbnail.png")));

    files.files.erase(applicationFolder + q("/profile/thumbnail.png"));
    EXPECT_EQ(store->resolvedCustomAvatarImageURL(), std::nullopt);
    EXPECT_EQ(store->profileAvatarImageRelativePath(), std::nullopt);
    EXPECT_EQ(store->profileSyncVersion(), 1);
}

TEST_F(SettingsStoreTest, LooksForTheAvatarInTheTemporaryFolderIfThereIsNoOther) {
    files.applicationSupport.reset();
    files.files[q("/run/user/1000/Tolmi/a.png")];
    storeAvatarPaths("a.png", "a.png");
    EXPECT_EQ(makeStore()->resolvedCustomAvatarImageURL(), FileURL(q("/run/user/1000/Tolmi/a.png")));
}

TEST_F(SettingsStoreTest, ClearsBrokenAvatarPathsAtStart) {
    addAvatarFiles();
    files.files[q("/etc/passwd")];
    files.files[applicationFolder + q("/profile/../passwd")];
    const QString thumbnail = q("profile/thumbnail.png");
    const struct {
        const char *name;
        std::optional<QString> image;
        std::optional<QString> thumbnail;
    } cases[] {
        { "the thumbnail alone", {}, thumbnail },
        { "the image alone", q("profile/avatar.png"), {} },
        { "a missing file", q("profile/gone.png"), thumbnail },
        { "an absolute path", q("/etc/passwd"), thumbnail },
        { "a path that leaves the folder", q("profile/../passwd"), thumbnail },
        { "two dots in a name", q("profile/a..png"), thumbnail },
        { "an empty path", q(""), thumbnail },
    };
    for (const auto &[name, image, small] : cases) {
        defaults.values.clear();
        if (image)
            defaults.values[imageKey] = *image;
        if (small)
            defaults.values[thumbnailKey] = *small;
        const auto store = makeStore();
        EXPECT_EQ(store->profileAvatarImageRelativePath(), std::nullopt) << name;
        EXPECT_EQ(store->profileAvatarThumbnailRelativePath(), std::nullopt) << name;
        EXPECT_EQ(store->profileSyncVersion(), 1) << name;
        EXPECT_EQ(defaults.values.count(imageKey) + defaults.values.count(thumbnailKey), 0u) << name;
    }
}

TEST_F(SettingsStoreTest, AdvancesTheOnboarding) {
    const auto state = [](const SettingsStore &store) {
        return QStringList { described(store.hasCompletedOnboarding()), described(store.onboardingLastStep()),
            described(store.onboardingSkippedAt()), described(store.onboardingVersion()) };
    };
    const auto row = [](const char *completed, const char *step, const char *skipped, const char *version) {
        return QStringList { q(completed), q(step), q(skipped), q(version) };
    };
    const auto store = makeStore();
    EXPECT_EQ(state(*store), row("false", "profile", "(none)", "1"));
    store->setOnboardingVersion(4);
    store->markOnboardingAdvanced(OnboardingStep::Permissions);
    EXPECT_EQ(state(*store), row("false", "permissions", "(none)", "4"));
    clock.shift(2);
    store->markOnboardingSkipped(OnboardingStep::DictationTest);
    EXPECT_EQ(state(*store), row("false", "dictationTest", "2026-01-01T00:00:02.000Z", "4"));
    store->markOnboardingAdvanced(OnboardingStep::Permissions);
    EXPECT_EQ(state(*store), row("false", "permissions", "2026-01-01T00:00:02.000Z", "4"));
    store->markOnboardingCompleted();
    EXPECT_EQ(state(*store), row("true", "completed", "(none)", "4"));
    store->markOnboardingAdvanced(OnboardingStep::Profile);
    EXPECT_EQ(state(*store), row("true", "completed", "(none)", "4"));
    store->markOnboardingSkipped(OnboardingStep::Profile);
    EXPECT_EQ(state(*store), row("false", "profile", "2026-01-01T00:00:02.000Z", "4"));
    store->resetOnboarding();
    EXPECT_EQ(state(*store), row("false", "profile", "(none)", "1"));
}

TEST_F(SettingsStoreTest, StoresOnboardingStepsInAFixedOrder) {
    const auto store = makeStore();
    const auto keysOf = [&](const std::function<void()> &operation) {
        defaults.writes.clear();
        operation();
        QStringList keys;
        for (const Write &write : defaults.writes)
            keys.append(write.key.mid(q("tolmi.onboarding.").size()));
        return keys.join(u' ');
    };
    EXPECT_EQ(keysOf([&] { store->markOnboardingSkipped(OnboardingStep::Profile); }),
        u"completed lastStep skippedAt");
    EXPECT_EQ(keysOf([&] { store->markOnboardingAdvanced(OnboardingStep::Profile); }), u"lastStep");
    EXPECT_EQ(keysOf([&] { store->markOnboardingCompleted(); }), u"completed lastStep skippedAt");
    EXPECT_EQ(keysOf([&] { store->markOnboardingAdvanced(OnboardingStep::Profile); }), u"");
    EXPECT_EQ(keysOf([&] { store->resetOnboarding(); }), u"completed skippedAt lastStep version");
}

TEST_F(SettingsStoreTest, RepairsAFinishedOnboardingAtStart) {
    defaults.values
        = { { q("tolmi.onboarding.completed"), true }, { q("tolmi.onboarding.version"), qint64(2) },
              { q("tolmi.onboarding.lastStep"), stored("permissions") },
              { q("tolmi.onboarding.skippedAt"), stored("then") } };
    const auto store = makeStore();
    EXPECT_EQ(store->onboardingLastStep(), OnboardingStep::Completed);
    EXPECT_EQ(store->onboardingSkippedAt(), std::nullopt);
    EXPECT_EQ(store->onboardingVersion(), 2);
    EXPECT_EQ(defaults.values.count(q("tolmi.onboarding.skippedAt")), 0u);
}

TEST_F(SettingsStoreTest, RemindsOfAnUnfinishedOnboarding) {
    const auto store = makeStore();
    EXPECT_TRUE(store->shouldShowOnboardingReminder());
    store->markOnboardingSkipped(OnboardingStep::Profile);
    EXPECT_TRUE(store->shouldShowOnboardingReminder());
    store->setOnboardingVersion(2);
    EXPECT_FALSE(store->shouldShowOnboardingReminder());
    store->setOnboardingVersion(1);
    store->markOnboardingCompleted();
    EXPECT_FALSE(store->shouldShowOnboardingReminder());
}

TEST_F(SettingsStoreTest, TruncatesFractionsOfMilliseconds) {
    const struct {
        double secondsSince1970;
        const char *expected;
    } cases[] {
        { 0, "1970-01-01T00:00:00.000Z" },
        { 1767225600.0009, "2026-01-01T00:00:00.000Z" },
        { 1767225600.25, "2026-01-01T00:00:00.250Z" },
        { 1767225600.99999, "2026-01-01T00:00:00.999Z" },
        { 951868799.5, "2000-02-29T23:59:59.500Z" },
        { -0.5, "1969-12-31T23:59:59.500Z" },
    };
    const auto store = makeStore();
    for (const auto &[secondsSince1970, expected] : cases) {
        clock.shift(Date::fromSecondsSince1970(secondsSince1970) - clock.now());
        store->setProfileUpdatedAt(QString());
        EXPECT_EQ(store->profileUpdatedAt(), q(expected));
    }
}

TEST_F(SettingsStoreTest, AnnouncesAChangeWhileTheOldValueIsReadable) {
    const auto store = makeStore();
    QStringList events;
    QObject::connect(store.get(), &ObservableObject::objectWillChange,
        [&] { events.append(q("object ") + store->ollamaModel()); });
    QObject::connect(store.get(), &SettingsStore::ollamaModelWillChange,
        [&](const QString &next) { events.append(store->ollamaModel() + q(" -> ") + next); });
    QObject::connect(store.get(), &SettingsStore::ollamaModelChanged,
        [&] { events.append(q("changed to ") + store->ollamaModel()); });
    store->setOllamaModel(q("a"));
    store->setOllamaModel(q("a"));
    EXPECT_EQ(events.join(u'|'), u"object llama3.2:3b|llama3.2:3b -> a|changed to a|object a|a -> a");
}

TEST_F(SettingsStoreTest, AnnouncesARepairAsASecondChange) {
    const auto store = makeStore();
    store->setProcessingTransitionSoundVolume(1);
    QStringList events;
    QObject::connect(
        store.get(), &SettingsStore::processingTransitionSoundVolumeWillChange, [&](double next) {
            events.append(described(store->processingTransitionSoundVolume()) + q(" -> ") + described(next));
        });
    QObject::connect(store.get(), &SettingsStore::processingTransitionSoundVolumeChanged,
        [&] { events.append(q("changed to ") + described(store->processingTransitionSoundVolume())); });
    defaults.writes.clear();
    store->setProcessingTransitionSoundVolume(0.5);
    store->setProcessingTransitionSoundVolume(-3);
    store->setProcessingTransitionSoundVolume(-2);
    EXPECT_EQ(events.join(u'|'), u"1 -> 0.5|changed to 0.5|0.5 -> -3|-3 -> 0|changed to 0|0 -> -2|-2 -> 0");
    const std::vector<Write> expected { { q("tolmi.processingTransitionSoundVolume"), 0.5 },
        { q("tolmi.processingTransitionSoundVolume"), 0.0 },
        { q("tolmi.processingTransitionSoundVolume"), 0.0 } };
    EXPECT_EQ(defaults.writes, expected);
}

TEST_F(SettingsStoreTest, ShowsEveryFieldToViews) {
    const auto store = makeStore();
    EXPECT_EQ(store->property("profileDisplayName").toString(), u"User");
    EXPECT_EQ(store->property("appearance").value<AppAppearance>(), AppAppearance::Dark);
    EXPECT_TRUE(store->setProperty("uiLanguage", QVariant::fromValue(AppLanguage::English)));
    EXPECT_EQ(store->uiLanguage(), AppLanguage::English);
    const QMetaObject *meta = store->metaObject();
    EXPECT_EQ(meta->propertyCount() - meta->propertyOffset(), 26);
    for (int index = meta->propertyOffset(); index < meta->propertyCount(); ++index)
        EXPECT_TRUE(meta->property(index).hasNotifySignal()) << meta->property(index).name();
}

TEST_F(SettingsStoreTest, AbortsWhenTheVersionOverflows) {
    const auto store = makeStore("tolmi.profile.syncVersion", std::numeric_limits<qint64>::max());
    EXPECT_DEATH(store->setProfileDisplayName(q("Ana")), "^Tolmi: the version of the profile");
}

TEST(ProfileAvatarPresetTest, NormalisesStoredTexts) {
    EXPECT_EQ(normalizedProfileAvatarID(q("briefcase.circle.fill")), u"briefcase.circle.fill");
    EXPECT_EQ(normalizedProfileAvatarID(q("")), u"person.crop.circle.fill");
    EXPECT_EQ(normalizedProfileAvatarID(q("work")), u"person.crop.circle.fill");
}

TEST(AppAppearanceTest, ForcesAnAppearanceOrFollowsTheSystem) {
    EXPECT_EQ(nsAppearance(AppAppearance::System), std::nullopt);
    EXPECT_EQ(nsAppearance(AppAppearance::Light), Appearance::Light);
    EXPECT_EQ(nsAppearance(AppAppearance::Dark), Appearance::Dark);
}
