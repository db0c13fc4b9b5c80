#include "TolmiApp/SettingsPage/SettingsModel.h"

#include "Support/SettingsModelFixture.h"
#include "TolmiApp/Texts/L10n.h"
#include "TolmiCore/OllamaConfiguration.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

QStringList fieldOf(const QVariantList &options, const QString &field) {
    QStringList values;
    for (const QVariant &option : options)
        values.append(option.toMap().value(field).toString());
    return values;
}

QString valuesOf(const QVariantList &options) {
    return fieldOf(options, QStringLiteral("value")).join(u' ');
}

QString textsOf(const QVariantList &options) {
    return fieldOf(options, QStringLiteral("text")).join(u'|');
}

class SettingsModelTest : public testing::Test {
protected:
    /// The value last stored at `key`.
    DefaultsValue stored(const char *key) const { return place.defaults.values.at(QString::fromLatin1(key)); }

    SettingsModelFixture place;
    SettingsModel &model = place.model;
    SettingsStore &store = place.store;
};

} // namespace

TEST_F(SettingsModelTest, OptionsAreInOrder) {
    EXPECT_EQ(valuesOf(model.appearanceOptions()), u"system light dark");
    EXPECT_EQ(valuesOf(model.uiLanguageOptions()), u"ro en");
    EXPECT_EQ(valuesOf(model.transcriptionLanguageOptions()), u"ro en auto es fr de it pt");
    EXPECT_EQ(valuesOf(model.transcriptionEngineOptions()), u"whisperCLI");
    EXPECT_EQ(valuesOf(model.performanceModeOptions()), u"faster maxQuality");
    EXPECT_EQ(valuesOf(model.transitionSoundOptions()),
        u"funk blow tink pop purr morse hero submarine glass bottle frog basso ping sosumi none");
}

TEST_F(SettingsModelTest, EverySoundIsAmongTheOptions) {
    const QStringList values = fieldOf(model.transitionSoundOptions(), QStringLiteral("value"));
    EXPECT_EQ(values.size(), qsizetype(allCases<ProcessingTransitionSound>().size()));
    for (const ProcessingTransitionSound sound : allCases<ProcessingTransitionSound>())
        EXPECT_TRUE(values.contains(rawValue(sound)));
}

TEST_F(SettingsModelTest, OptionsAreNamedInTheLanguageOfTheInterface) {
    EXPECT_EQ(textsOf(model.appearanceOptions()), u"System|Light|Dark");
    EXPECT_EQ(textsOf(model.performanceModeOptions()), u"Faster|Max quality");
    QSignalSpy changes(&model, &SettingsModel::optionsChanged);
    model.setUiLanguage(QStringLiteral("ro"));
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(textsOf(model.appearanceOptions()), u"Sistem|Luminos|Intunecat");
    EXPECT_EQ(textsOf(model.transitionSoundOptions()).section(u'|', -1), u"Fara sunet");
    EXPECT_EQ(model.uiLanguage(), u"ro");
}

TEST_F(SettingsModelTest, EveryChoiceIsStoredAtOnce) {
    model.setAppearance(QStringLiteral("light"));
    EXPECT_EQ(stored("tolmi.appearance"), DefaultsValue(QStringLiteral("light")));
    model.setUiLanguage(QStringLiteral("ro"));
    EXPECT_EQ(stored("tolmi.uiLanguage"), DefaultsValue(QStringLiteral("ro")));
    model.setTranscriptionEngine(QStringLiteral("whisperCLI"));
    EXPECT_EQ(stored("tolmi.transcriptionEngine"), DefaultsValue(QStringLiteral("whisperCLI")));
    model.setPerformanceMode(QStringLiteral("maxQuality"));
    EXPECT_EQ(stored("tolmi.performanceMode"), DefaultsValue(QStringLiteral("maxQuality")));
    model.setTransitionSound(QStringLiteral("none"));
    EXPECT_EQ(stored("tolmi.processingTransitionSound"), DefaultsValue(QStringLiteral("none")));
    model.setOllamaTimeoutText(QStringLiteral("12.5"));
    EXPECT_EQ(stored("tolmi.ollamaTimeout"), DefaultsValue(12.5));
    EXPECT_EQ(model.appearance(), u"light");
    EXPECT_EQ(model.performanceMode(), u"maxQuality");
    EXPECT_EQ(model.transcriptionEngine(), u"whisperCLI");
    EXPECT_EQ(model.transitionSound(), u"none");
}

TEST_F(SettingsModelTest, FollowsChangesMadeElsewhere) {
    QSignalSpy appearances(&model, &SettingsModel::appearanceChanged);
    QSignalSpy modes(&model, &SettingsModel::performanceModeChanged);
    QSignalSpy sounds(&model, &SettingsModel::transitionSoundChanged);
    QSignalSpy timeouts(&model, &SettingsModel::ollamaTimeoutTextChanged);
    store.setAppearance(AppAppearance::Light);
    store.setPerformanceMode(DictationPerformanceMode::MaxQuality);
    store.setProcessingTransitionSound(ProcessingTransitionSound::Basso);
    store.setOllamaTimeout(3);
    EXPECT_EQ(appearances.size(), 1);
    EXPECT_EQ(modes.size(), 1);
    EXPECT_EQ(sounds.size(), 1);
    EXPECT_EQ(timeouts.size(), 1);
    EXPECT_EQ(model.ollamaTimeoutText(), u"3");
}

TEST(SettingsVolumeText, WholePercentsWithHalvesAwayFromZero) {
    const std::vector<std::pair<double, QString>> rows { { 0, QStringLiteral("0%") },
        { 0.05, QStringLiteral("5%") }, { 0.35, QStringLiteral("35%") },
        { 0.35000000000000003, QStringLiteral("35%") }, { 0.125, QStringLiteral("13%") },
        { 0.625, QStringLiteral("63%") }, { 0.999, QStringLiteral("100%") }, { 1, QStringLiteral("100%") } };
    for (const auto &[value, text] : rows)
        EXPECT_EQ(SettingsModel::volumeText(value), text);
}

namespace {
struct TimeoutRow {
    QLocale locale;
    double seconds;
    QString text;
};
} // namespace

TEST(SettingsTimeoutText, ShowsAndReadsTheNumberFormatOfTheLocale) {
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QLocale romanian(QLocale::Romanian, QLocale::Romania);
    for (const TimeoutRow &row : { TimeoutRow { english, 10, QStringLiteral("10") },
             TimeoutRow { english, 12.5, QStringLiteral("12.5") },
             TimeoutRow { english, 1234.5, QStringLiteral("1,234.5") },
             TimeoutRow { english, -3, QStringLiteral("-3") }, TimeoutRow { english, 0, QStringLiteral("0") },
             TimeoutRow { romanian, 12.5, QStringLiteral("12,5") },
             TimeoutRow { romanian, 1234.5, QStringLiteral("1.234,5") } }) {
        SettingsModelFixture place(true, row.locale);
        place.store.setOllamaTimeout(row.seconds);
        EXPECT_EQ(place.model.ollamaTimeoutText(), row.text);
        place.store.setOllamaTimeout(99);
        place.model.setOllamaTimeoutText(u' ' + row.text);
        EXPECT_EQ(place.store.ollamaTimeout(), row.seconds);
    }
}

TEST_F(SettingsModelTest, ATimeoutIsShownWithAtMostSixDecimals) {
    store.setOllamaTimeout(1.0 / 3);
    EXPECT_EQ(model.ollamaTimeoutText(), u"0.333333");
}

TEST_F(SettingsModelTest, NonNumbersLeaveTheTimeoutUnchanged) {
    store.setOllamaTimeout(7);
    for (const char *text : { "", " ", "-", "ten", "1.5.2", "5 s", "inf", "nan" }) {
        model.setOllamaTimeoutText(QString::fromLatin1(text));
        EXPECT_EQ(store.ollamaTimeout(), 7) << text;
    }
}

TEST_F(SettingsModelTest, PreviewPlaysOnceWithItsOwnVolume) {
    store.setProcessingTransitionSoundVolume(0.1);
    store.setProcessingTransitionPreviewVolume(0.8);
    model.previewTransitionSound();
    ASSERT_EQ(place.sounds.sounds.size(), 1u);
    const FakeSystemSounds::Sound &sound = *place.sounds.sounds.front();
    EXPECT_EQ(sound.name, u"Hero");
    EXPECT_FALSE(sound.loops);
    EXPECT_EQ(sound.volume, 0.8f);
    EXPECT_EQ(sound.volumeAtPlay, 0.8f);
    EXPECT_TRUE(sound.isPlaying);
}

TEST_F(SettingsModelTest, VolumeChangesApplyToTheNextPreview) {
    model.previewTransitionSound();
    store.setProcessingTransitionPreviewVolume(0.2);
    EXPECT_EQ(place.sounds.sounds.front()->volume, 0.7f);
    model.previewTransitionSound();
    EXPECT_EQ(place.sounds.sounds.back()->volume, 0.2f);
}

TEST_F(SettingsModelTest, ASecondPreviewStopsTheFirstAndStartsAgain) {
    model.previewTransitionSound();
    model.previewTransitionSound();
    EXPECT_EQ(place.sounds.calls,
        QStringList(
            { QStringLiteral("Hero play"), QStringLiteral("Hero stop"), QStringLiteral("Hero play") }));
    EXPECT_TRUE(place.sounds.sounds.back()->isPlaying);
}

TEST_F(SettingsModelTest, PreviewOfSilenceOnlyStops) {
    model.previewTransitionSound();
    EXPECT_TRUE(model.canPreviewTransitionSound());
    model.setTransitionSound(QStringLiteral("none"));
    EXPECT_FALSE(model.canPreviewTransitionSound());
    EXPECT_TRUE(place.sounds.sounds.front()->isPlaying);
    model.previewTransitionSound();
    EXPECT_FALSE(place.sounds.sounds.front()->isPlaying);
    EXPECT_EQ(place.sounds.sounds.size(), 1u);
}

TEST_F(SettingsModelTest, PreviewOfAMissingSoundOnlyStops) {
    model.previewTransitionSound();
    model.setTransitionSound(QStringLiteral("basso"));
    model.previewTransitionSound();
    EXPECT_EQ(place.sounds.requests, QStringList({ QStringLiteral("Hero"), QStringLiteral("Basso") }));
    EXPECT_EQ(place.sounds.calls, QStringList({ QStringLiteral("Hero play"), QStringLiteral("Hero stop") }));
    EXPECT_FALSE(place.sounds.sounds.front()->isDestroyed);
}

TEST_F(SettingsModelTest, ResetsTheSystemPrompt) {
    store.setOllamaSystemPrompt(QStringLiteral("Shout."));
    model.resetSystemPrompt();
    EXPECT_EQ(store.ollamaSystemPrompt(), OllamaConfiguration::defaultSystemPrompt);
}

TEST_F(SettingsModelTest, NavigatesToTheProfile) {
    model.openProfile();
    EXPECT_EQ(place.destinations, QList { StudioDestination::Profile });
}
