#include "TolmiApp/Popup/MenuBarPopupModel.h"

#include "App/Dictation/DictationFlowFixture.h"
#include "Support/FakePasteboard.h"
#include "TolmiApp/Texts/L10n.h"

#include <QSignalSpy>

namespace {

using Indicator = MenuBarPopupModel::Indicator;
using Shade = MenuBarPopupModel::Shade;

QStringList fieldOf(const QVariantList &options, const QString &field) {
    QStringList values;
    for (const QVariant &option : options)
        values.append(option.toMap().value(field).toString());
    return values;
}

} // namespace

class MenuBarPopupModelTest : public DictationFlowFixture {
protected:
    void open() {
        settings->setUiLanguage(AppLanguage::English);
        createSetUp();
        model.emplace(manager, pasteboard,
            MenuBarPopupModel::Actions { [this] { ways.append(QStringLiteral("command center")); },
                [this] { ways.append(QStringLiteral("profile")); },
                [this] { ways.append(QStringLiteral("settings")); },
                [this] { ways.append(QStringLiteral("updates")); },
                [this] { ways.append(QStringLiteral("quit")); } });
    }

    // The fixture's end wants nobody to hold the flow.
    void TearDown() override { model.reset(); }

    FakePasteboard pasteboard;
    QStringList ways;
    std::optional<MenuBarPopupModel> model;
};

TEST_F(MenuBarPopupModelTest, BadgeOfEveryState) {
    struct Row {
        Kind kind;
        Indicator indicator;
        Shade shade;
    };
    for (const Row &row : { Row { Kind::Idle, Indicator::Circle, Shade::Frost },
             Row { Kind::Recording, Indicator::Circle, Shade::White },
             Row { Kind::Transcribing, Indicator::Spinner, Shade::Cloud },
             Row { Kind::OptimizingQuality, Indicator::Spinner, Shade::Cloud },
             Row { Kind::Refining, Indicator::Spinner, Shade::Cloud },
             Row { Kind::Pasting, Indicator::Circle, Shade::Cloud },
             Row { Kind::Done, Indicator::Circle, Shade::Frost },
             Row { Kind::Error, Indicator::Circle, Shade::Smoke } }) {
        EXPECT_EQ(MenuBarPopupModel::indicatorOf(row.kind), row.indicator) << int(row.kind);
        EXPECT_EQ(MenuBarPopupModel::shadeOf(row.kind), row.shade) << int(row.kind);
    }
}

TEST_F(MenuBarPopupModelTest, BadgeFollowsTheFlow) {
    open();
    EXPECT_EQ(model->stateLabel(), QStringLiteral("Ready"));
    QSignalSpy states(&*model, &MenuBarPopupModel::stateChanged);
    QSignalSpy labels(&*model, &MenuBarPopupModel::stateLabelChanged);
    record();
    EXPECT_EQ(states.size(), 1);
    EXPECT_EQ(labels.size(), 1);
    EXPECT_EQ(model->stateLabel(), QStringLiteral("Recording"));
    EXPECT_EQ(model->badgeIndicator(), Indicator::Circle);
    EXPECT_EQ(model->badgeShade(), Shade::White);
}

TEST_F(MenuBarPopupModelTest, AnErrorIsOnlyCalledOne) {
    open();
    reach(Kind::Error);
    EXPECT_EQ(model->stateLabel(), L10n::dictationStateLabel(manager->state(), AppLanguage::English));
    EXPECT_EQ(model->badgeShade(), Shade::Smoke);
}

TEST_F(MenuBarPopupModelTest, FollowsTheRightToWatchKeys) {
    fakes.hotkey->isTrusted = false;
    open();
    EXPECT_FALSE(model->accessibilityGranted());
    model->requestAccessibility();
    EXPECT_EQ(fakes.journal.count(QStringLiteral("hotkey.prompt")), 1);
    QSignalSpy changes(&*model, &MenuBarPopupModel::accessibilityGrantedChanged);
    fakes.hotkey->isTrusted = true;
    clock.advance(1);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_TRUE(model->accessibilityGranted());
}

TEST_F(MenuBarPopupModelTest, TranscriptComesWithTheFirstDictationOfTheRun) {
    open();
    EXPECT_EQ(model->lastTranscript(), QString());
    QSignalSpy changes(&*model, &MenuBarPopupModel::lastTranscriptChanged);
    settings->setRefinementEnabled(false);
    dictate(QStringLiteral("Hello there."));
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(model->lastTranscript(), QStringLiteral("Hello there."));
}

TEST_F(MenuBarPopupModelTest, CopyIsAnOrdinaryPlainText) {
    open();
    settings->setRefinementEnabled(false);
    dictate(QStringLiteral("Ședință la ora zece."));
    model->copyLastTranscript();
    const QByteArray bytes = QStringLiteral("Ședință la ora zece.").toUtf8();
    EXPECT_EQ(pasteboard.content, std::vector { (PasteboardItem { { { pasteboardTextType, bytes } } }) });
    EXPECT_EQ(pasteboard.calls, std::vector { QStringLiteral("setItems") });
    EXPECT_FALSE(pasteboard.isMarked());
}

TEST_F(MenuBarPopupModelTest, InterfaceLanguagesInTheirOrder) {
    open();
    EXPECT_EQ(fieldOf(model->uiLanguageOptions(), QStringLiteral("value")),
        QStringList({ QStringLiteral("ro"), QStringLiteral("en") }));
    EXPECT_EQ(fieldOf(model->uiLanguageOptions(), QStringLiteral("text")),
        QStringList({ L10n::appLanguageName(AppLanguage::Romanian, AppLanguage::English),
            L10n::appLanguageName(AppLanguage::English, AppLanguage::English) }));
    EXPECT_EQ(model->uiLanguage(), QStringLiteral("en"));
}

TEST_F(MenuBarPopupModelTest, TranscriptionLanguagesInTheirOrder) {
    open();
    EXPECT_EQ(fieldOf(model->transcriptionLanguageOptions(), QStringLiteral("value")).join(QLatin1Char(' ')),
        QStringLiteral("ro en auto es fr de it pt"));
    EXPECT_EQ(fieldOf(model->transcriptionLanguageOptions(), QStringLiteral("text")).value(2),
        QStringLiteral("Auto-detect"));
}

TEST_F(MenuBarPopupModelTest, AnotherInterfaceLanguageRenamesEverything) {
    open();
    QSignalSpy labels(&*model, &MenuBarPopupModel::stateLabelChanged);
    QSignalSpy languages(&*model, &MenuBarPopupModel::uiLanguageChanged);
    model->setUiLanguage(QStringLiteral("ro"));
    EXPECT_EQ(settings->uiLanguage(), AppLanguage::Romanian);
    EXPECT_EQ(labels.size(), 1);
    EXPECT_EQ(languages.size(), 1);
    EXPECT_EQ(model->stateLabel(), QStringLiteral("Gata"));
    EXPECT_EQ(fieldOf(model->transcriptionLanguageOptions(), QStringLiteral("text")).last(),
        QStringLiteral("Portugheza"));
    EXPECT_EQ(fieldOf(model->uiLanguageOptions(), QStringLiteral("text")).first(), QStringLiteral("Romana"));
}

TEST_F(MenuBarPopupModelTest, TranscriptionLanguageIsStoredAtOnce) {
    open();
    QSignalSpy changes(&*model, &MenuBarPopupModel::transcriptionLanguageChanged);
    model->setTranscriptionLanguage(QStringLiteral("de"));
    EXPECT_EQ(settings->language(), QStringLiteral("de"));
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(MenuBarPopupModelTest, AnUnknownTranscriptionLanguageStays) {
    settings->setLanguage(QStringLiteral("hu"));
    open();
    EXPECT_EQ(model->transcriptionLanguage(), QStringLiteral("hu"));
    EXPECT_FALSE(fieldOf(model->transcriptionLanguageOptions(), QStringLiteral("value"))
                     .contains(QStringLiteral("hu")));
    model->setUiLanguage(QStringLiteral("ro"));
    EXPECT_EQ(settings->language(), QStringLiteral("hu"));
}

TEST_F(MenuBarPopupModelTest, RefinementReconfiguresTheRefinerAtEachChange) {
    settings->setRefinementEnabled(false);
    open();
    EXPECT_EQ(fakes.ollamaConfigurations.size(), 0U);
    model->setRefinementEnabled(true);
    EXPECT_TRUE(settings->refinementEnabled());
    EXPECT_EQ(fakes.ollamaConfigurations.size(), 1U);
    model->setRefinementEnabled(true);
    EXPECT_EQ(fakes.ollamaConfigurations.size(), 1U);
    model->setRefinementEnabled(false);
    EXPECT_FALSE(settings->refinementEnabled());
    model->setRefinementEnabled(true);
    EXPECT_EQ(fakes.ollamaConfigurations.size(), 2U);
}

TEST_F(MenuBarPopupModelTest, WaysOut) {
    open();
    model->openCommandCenter();
    model->openProfile();
    model->openSettings();
    model->checkForUpdates();
    model->quit();
    EXPECT_EQ(
        ways.join(QLatin1String(", ")), QStringLiteral("command center, profile, settings, updates, quit"));
}

TEST_F(MenuBarPopupModelTest, UpdatesCanBeCheckedOnceSomebodySaysSo) {
    open();
    EXPECT_FALSE(model->canCheckForUpdates());
    QSignalSpy changes(&*model, &MenuBarPopupModel::canCheckForUpdatesChanged);
    model->setCanCheckForUpdates(true);
    model->setCanCheckForUpdates(true);
    EXPECT_TRUE(model->canCheckForUpdates());
    EXPECT_EQ(changes.size(), 1);
}
