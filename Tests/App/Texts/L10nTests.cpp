#include "Support/Print.h"
#include "TolmiApp/Texts/L10n.h"

#include <QCryptographicHash>

#include <gtest/gtest.h>

#include <algorithm>

using L10n::Key;

namespace {
constexpr AppLanguage english = AppLanguage::English;
constexpr AppLanguage romanian = AppLanguage::Romanian;
} // namespace

// The texts are agreed to the letter and in this order: key, English and Romanian, separated by tabs.
TEST(L10n, HasTheAgreedTextsInOrder) {
    ASSERT_EQ(L10n::keyCount, 263u);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const Key key : L10n::allKeys()) {
        const QStringList row { L10n::rawValue(key), L10n::text(key, english), L10n::text(key, romanian) };
        hash.addData(row.join(u'\t').toUtf8() + '\n');
    }
    EXPECT_EQ(hash.result().toHex(), "c67a32109263a53af39b905ee4fbf761bf11ecfc1e8ee829f92328f0695104bc");
}

TEST(L10n, WritesRomanianWithoutDiacritics) {
    for (const Key key : L10n::allKeys()) {
        const QString text = L10n::text(key, romanian);
        const bool isPlain = std::all_of(text.begin(), text.end(),
            [](QChar character) { return character < u'\x7f' || character == u'\u2325'; });
        EXPECT_TRUE(isPlain) << text.toStdString();
    }
}

TEST(L10n, NamesTheInterfaceLanguages) {
    EXPECT_EQ(L10n::appLanguageName(romanian, romanian), u"Romana");
    EXPECT_EQ(L10n::appLanguageName(english, romanian), u"Engleza");
    EXPECT_EQ(L10n::appLanguageName(romanian, english), u"Romanian");
    EXPECT_EQ(L10n::appLanguageName(english, english), u"English");
}

TEST(L10n, NamesTheAppearances) {
    EXPECT_EQ(L10n::appAppearanceName(AppAppearance::System, english), u"System");
    EXPECT_EQ(L10n::appAppearanceName(AppAppearance::Light, english), u"Light");
    EXPECT_EQ(L10n::appAppearanceName(AppAppearance::Dark, english), u"Dark");
    EXPECT_EQ(L10n::appAppearanceName(AppAppearance::System, romanian), u"Sistem");
    EXPECT_EQ(L10n::appAppearanceName(AppAppearance::Light, romanian), u"Luminos");
    EXPECT_EQ(L10n::appAppearanceName(AppAppearance::Dark, romanian), u"Intunecat");
}

TEST(L10n, NamesThePerformanceModesAndTheEngine) {
    EXPECT_EQ(L10n::performanceModeName(DictationPerformanceMode::Faster, english), u"Faster");
    EXPECT_EQ(L10n::performanceModeName(DictationPerformanceMode::MaxQuality, english), u"Max quality");
    EXPECT_EQ(L10n::performanceModeName(DictationPerformanceMode::Faster, romanian), u"Mai rapid");
    EXPECT_EQ(L10n::performanceModeName(DictationPerformanceMode::MaxQuality, romanian), u"Calitate maxima");
    for (const AppLanguage language : allCases<AppLanguage>()) {
        EXPECT_EQ(L10n::transcriptionEngineName(TranscriptionEngineOption::WhisperCLI, language),
            u"whisper.cpp (CLI, local)");
    }
}

TEST(L10n, NamesEverySoundByTheKeyOfItsCase) {
    for (const ProcessingTransitionSound sound : allCases<ProcessingTransitionSound>()) {
        QString caseName = rawValue(sound);
        caseName[0] = caseName[0].toUpper();
        const QString keyName = QStringLiteral("settingsTransitionSound") + caseName;
        const auto keys = L10n::allKeys();
        const auto key = std::find_if(
            keys.begin(), keys.end(), [&](Key known) { return L10n::rawValue(known) == keyName; });
        ASSERT_NE(key, keys.end()) << keyName.toStdString();
        for (const AppLanguage language : allCases<AppLanguage>())
            EXPECT_EQ(L10n::transitionSoundName(sound, language), L10n::text(*key, language));
    }
    EXPECT_EQ(L10n::transitionSoundName(ProcessingTransitionSound::Sosumi, english), u"Sosumi");
    EXPECT_EQ(L10n::transitionSoundName(ProcessingTransitionSound::None, romanian), u"Fara sunet");
}

TEST(L10n, NamesTheTranscriptionLanguages) {
    struct {
        QStringView code;
        QStringView english;
        QStringView romanian;
    } const cases[] {
        { u"ro", u"Romanian", u"Romana" },
        { u"en", u"English", u"Engleza" },
        { u"auto", u"Auto-detect", u"Auto-detect" },
        { u"es", u"Spanish", u"Spaniola" },
        { u"fr", u"French", u"Franceza" },
        { u"de", u"German", u"Germana" },
        { u"it", u"Italian", u"Italiana" },
        { u"pt", u"Portuguese", u"Portugheza" },
        { u"sv", u"SV", u"SV" },
        { u"RO", u"RO", u"RO" },
        { u"", u"", u"" },
    };
    for (const auto &[code, inEnglish, inRomanian] : cases) {
        EXPECT_EQ(L10n::transcriptionLanguageName(code.toString(), english), inEnglish);
        EXPECT_EQ(L10n::transcriptionLanguageName(code.toString(), romanian), inRomanian);
    }
}

TEST(L10n, NamesTheAvatars) {
    const QStringList inEnglish { QStringLiteral("Default"), QStringLiteral("Work"),
        QStringLiteral("Creative"), QStringLiteral("Voice") };
    const QStringList inRomanian { QStringLiteral("Standard"), QStringLiteral("Office"),
        QStringLiteral("Creativ"), QStringLiteral("Dictare") };
    const auto presets = allCases<ProfileAvatarPreset>();
    for (size_t index = 0; index < presets.size(); ++index) {
        EXPECT_EQ(L10n::profileAvatarName(presets[index], english), inEnglish[qsizetype(index)]);
        EXPECT_EQ(L10n::profileAvatarName(presets[index], romanian), inRomanian[qsizetype(index)]);
    }
}

TEST(L10n, Counts) {
    EXPECT_EQ(L10n::historyCount(0, english), u"0 total");
    EXPECT_EQ(L10n::historyCount(0, romanian), u"0 total");
    EXPECT_EQ(L10n::historyCount(1234567, english), u"1234567 total");
    EXPECT_EQ(L10n::selectedCount(2, english), u"2 selected");
    EXPECT_EQ(L10n::selectedCount(2, romanian), u"2 selectate");
    EXPECT_EQ(L10n::pinnedCount(3, english), u"Pinned: 3.");
    EXPECT_EQ(L10n::pinnedCount(3, romanian), u"Fixate: 3.");
    EXPECT_EQ(L10n::onboardingProgress(2, 3, english), u"Progress: 2/3");
    EXPECT_EQ(L10n::onboardingProgress(2, 3, romanian), u"Progres: 2/3");
}

TEST(L10n, LabelsTheLanguageOfAnEntry) {
    EXPECT_EQ(L10n::languageLabel(QStringLiteral("auto"), english), u"Language: AUTO");
    EXPECT_EQ(L10n::languageLabel(QStringLiteral("ro"), english), u"Language: RO");
    EXPECT_EQ(L10n::languageLabel(QStringLiteral("ro"), romanian), u"Limba: RO");
}

TEST(L10n, TitlesACopyButton) {
    EXPECT_EQ(L10n::copyTitle(QStringLiteral("Output"), romanian), u"Copiaza Output");
    EXPECT_EQ(L10n::copyTitle(QStringLiteral("Output"), english), u"Copy Output");
}

TEST(L10n, LabelsThePasteTarget) {
    EXPECT_EQ(L10n::pasteTargetLabel(QStringLiteral("Notes"), english), u"Pasted to: Notes");
    EXPECT_EQ(L10n::pasteTargetLabel(QStringLiteral("Notes"), romanian), u"Lipire in: Notes");
    for (const std::optional<QString> &nobody : { std::optional<QString>(), std::optional(QString()) }) {
        EXPECT_EQ(L10n::pasteTargetLabel(nobody, english), u"Unknown target");
        EXPECT_EQ(L10n::pasteTargetLabel(nobody, romanian), u"Destinatie necunoscuta");
    }
}

TEST(L10n, LabelsTheDictationStates) {
    using Kind = DictationState::Kind;
    const std::pair<DictationState, Key> cases[] {
        { Kind::Idle, Key::stateReady },
        { Kind::Recording, Key::stateRecording },
        { Kind::Transcribing, Key::stateTranscribing },
        { Kind::OptimizingQuality, Key::stateOptimizingQuality },
        { Kind::Refining, Key::stateRefining },
        { Kind::Pasting, Key::statePasting },
        { Kind::Done, Key::stateDone },
        { DictationState::error(QStringLiteral("the disk is full")), Key::stateError },
    };
    for (const auto &[state, key] : cases) {
        for (const AppLanguage language : allCases<AppLanguage>())
            EXPECT_EQ(L10n::dictationStateLabel(state, language), L10n::text(key, language));
    }
    EXPECT_EQ(L10n::dictationStateLabel(DictationState::error(QStringLiteral("the disk is full")), english),
        u"Error");
}
