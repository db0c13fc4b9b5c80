#include "TolmiApp/CommandCenter/CommandCenterModel.h"

#include "App/Studio/StudioFixture.h"
#include "Support/SignalCounter.h"

namespace {

class CommandCenterModelTest : public StudioFixture {
protected:
    void SetUp() override {
        createSetUp();
        model.emplace(manager, *history, CommandCenterModel::Platform { clock, microphone },
            CommandCenterModel::Navigation {
                [this](StudioDestination destination) { destinations.push_back(destination); },
                [this] { ++resumptions; } });
    }
    void TearDown() override { model.reset(); }

    void addEntry(const std::optional<QString> &target) {
        history->add({ .rawText = QStringLiteral("text"), .pasteTargetAppName = target });
    }

    std::vector<StudioDestination> destinations;
    int resumptions = 0;
    std::optional<CommandCenterModel> model;
};

} // namespace

TEST_F(CommandCenterModelTest, ShowsTheProfile) {
    EXPECT_EQ(model->profile()->displayName(), QStringLiteral("User"));
    settings->setProfileDisplayName(QStringLiteral("Ana"));
    settings->setProfileAvatarID(QStringLiteral("sparkles"));
    EXPECT_EQ(model->profile()->displayName(), QStringLiteral("Ana"));
    EXPECT_EQ(model->profile()->symbol(), QStringLiteral("sparkles"));
}

TEST_F(CommandCenterModelTest, RemindsUntilTheOnboardingIsFinished) {
    SignalCounter changes(&*model, &CommandCenterModel::onboardingReminderChanged);
    EXPECT_TRUE(model->showsOnboardingReminder());
    settings->markOnboardingSkipped(OnboardingStep::Permissions);
    EXPECT_TRUE(model->showsOnboardingReminder());
    settings->markOnboardingCompleted();
    EXPECT_FALSE(model->showsOnboardingReminder());
    EXPECT_EQ(changes.count(), 1);
    settings->resetOnboarding();
    EXPECT_TRUE(model->showsOnboardingReminder());
    settings->setOnboardingVersion(2);
    EXPECT_FALSE(model->showsOnboardingReminder());
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(CommandCenterModelTest, CountsCompletedSteps) {
    struct Case {
        const char *name;
        AuthorizationStatus microphone;
        bool accessibility;
        bool hasEntry;
        int steps;
    };
    using enum AuthorizationStatus;
    const Case cases[] {
        { "User", Denied, false, false, 0 },
        { "USER", Authorized, false, false, 0 },
        { "Ana", Denied, false, false, 1 },
        { "Ana", Denied, true, false, 1 },
        { "Ana", NotDetermined, true, false, 1 },
        { "Ana", Restricted, true, false, 1 },
        { "Ana", Authorized, false, false, 1 },
        { "User", Authorized, true, false, 1 },
        { "Ana", Authorized, true, false, 2 },
        { "User", Denied, false, true, 1 },
        { "Ana", Authorized, true, true, 3 },
    };
    for (const Case &one : cases) {
        settings->setProfileDisplayName(QString::fromLatin1(one.name));
        microphone.present = one.microphone;
        fakes.hotkey->isTrusted = one.accessibility;
        fakes.application.didBecomeActive();
        history->clear();
        if (one.hasEntry)
            addEntry({});
        EXPECT_EQ(model->completedOnboardingSteps(), one.steps) << one.name << one.steps;
        EXPECT_EQ(model->onboardingProgress(), QStringLiteral("Progress: %1/3").arg(one.steps));
    }
}

TEST_F(CommandCenterModelTest, AnnouncesEachStepOfTheProgress) {
    microphone.present = AuthorizationStatus::NotDetermined;
    QStringList shown;
    QObject::connect(&*model, &CommandCenterModel::onboardingProgressChanged, &*model,
        [&] { shown.append(model->onboardingProgress()); });
    const auto lastShown = [&shown] { return shown.isEmpty() ? QString() : std::exchange(shown, {}).last(); };

    settings->setProfileDisplayName(QStringLiteral("Ana"));
    EXPECT_EQ(lastShown(), QStringLiteral("Progress: 1/3"));
    microphone.present = AuthorizationStatus::Authorized;
    fakes.application.didBecomeActive();
    EXPECT_EQ(lastShown(), QStringLiteral("Progress: 2/3"));
    addEntry({});
    EXPECT_EQ(lastShown(), QStringLiteral("Progress: 3/3"));
    fakes.hotkey->isTrusted = false;
    fakes.application.didBecomeActive();
    EXPECT_EQ(lastShown(), QStringLiteral("Progress: 2/3"));
    settings->setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(lastShown(), QStringLiteral("Progres: 2/3"));
}

TEST_F(CommandCenterModelTest, AMicrophonePermissionFromADictationCounts) {
    microphone.present = AuthorizationStatus::NotDetermined;
    EXPECT_EQ(model->completedOnboardingSteps(), 0);
    SignalCounter changes(&*model, &CommandCenterModel::onboardingProgressChanged);
    microphone.present = AuthorizationStatus::Authorized;
    record();
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(model->completedOnboardingSteps(), 1);
}

TEST_F(CommandCenterModelTest, CountsTheHistoryAsItGrows) {
    SignalCounter changes(&*model, &CommandCenterModel::historyChanged);
    const QString hint = QStringLiteral("Search, export, pin, and delete from the History workspace.");
    EXPECT_EQ(model->historyCount(), QStringLiteral("0 total"));
    EXPECT_EQ(model->historyHint(), QStringLiteral("Pinned: 0. ") + hint);
    addEntry({});
    addEntry({});
    history->togglePin(history->entries().front().id);
    EXPECT_EQ(model->historyCount(), QStringLiteral("2 total"));
    EXPECT_EQ(model->historyHint(), QStringLiteral("Pinned: 1. ") + hint);
    EXPECT_EQ(changes.count(), 3);
    history->clear();
    EXPECT_EQ(model->historyCount(), QStringLiteral("0 total"));
    settings->setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(model->historyHint(),
        QStringLiteral("Fixate: 0. Cauta, exporta, fixeaza si sterge din zona Istoric."));
    EXPECT_EQ(changes.count(), 5);
}

TEST_F(CommandCenterModelTest, ShowsWhereTheLatestTextWasPasted) {
    EXPECT_EQ(model->lastDestination(), QString());
    addEntry(QStringLiteral("Thunderbird"));
    EXPECT_EQ(model->lastDestination(), QStringLiteral("Last destination: Thunderbird"));
    clock.shift(1);
    addEntry({});
    EXPECT_EQ(model->lastDestination(), QStringLiteral("Last destination: Unknown target"));
    settings->setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(model->lastDestination(), QStringLiteral("Ultima destinatie: Destinatie necunoscuta"));
}

TEST_F(CommandCenterModelTest, NavigatesToTheWorkspaces) {
    model->openProfile();
    model->openDictationLive();
    model->openHistory();
    model->openTemplates();
    model->openHealth();
    using enum StudioDestination;
    EXPECT_EQ(destinations, (std::vector { Profile, DictationLive, History, Templates, Health }));
    model->resumeOnboarding();
    EXPECT_EQ(resumptions, 1);
}

TEST_F(CommandCenterModelTest, DrivesTheFlow) {
    fakes.recorder->permission.give(true);
    model->dictation()->runAction();
    clock.runPosted();
    EXPECT_EQ(manager->state(), Kind::Recording);
}
