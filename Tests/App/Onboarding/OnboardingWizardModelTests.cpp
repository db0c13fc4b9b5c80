#include "TolmiApp/Onboarding/OnboardingWizardModel.h"

#include "App/Studio/StudioFixture.h"
#include "Support/FakeAccessibilityRight.h"
#include "Support/SignalCounter.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

namespace {

using enum AuthorizationStatus;
using Failure = std::optional<L10n::Key>;

const QString checked = QStringLiteral("checkmark.circle.fill");
const QString current = QStringLiteral("circle.inset.filled");
const QString ahead = QStringLiteral("circle");

class OnboardingWizardTest : public StudioFixture {
protected:
    void SetUp() override {
        fileManager.addExecutable(settings->whisperBinaryPath());
        fileManager.files[settings->modelPath()] = "model";
        createSetUp();
    }
    void TearDown() override { wizard.reset(); }

    void open() {
        wizard.emplace(manager, *history,
            OnboardingWizardModel::Platform { clock, microphone, accessibility, fileManager },
            OnboardingWizardModel::Host { PlatformTexts::forLinux(),
                { [this](std::function<void(L10n::Key)> onFailure) { failImport = std::move(onFailure); },
                    [this] { return removal; } },
                [this] { ++closings; } });
    }
    void openAt(OnboardingStep step) {
        settings->setOnboardingLastStep(step);
        open();
    }
    void press() {
        wizard->runDictationAction();
        clock.runPosted();
    }
    void cleanEnd(const QString &text) {
        dictate(text);
        clock.advance(2);
    }

    FakeAccessibilityRight accessibility;
    std::function<void(L10n::Key)> failImport;
    Failure removal;
    int closings = 0;
    std::optional<OnboardingWizardModel> wizard;
};

} // namespace

TEST_F(OnboardingWizardTest, BeginsAtTheFirstStep) {
    open();
    EXPECT_EQ(wizard->currentStep(), OnboardingStep::Profile);
    EXPECT_EQ(wizard->stepSymbols(), QStringList({ current, ahead, ahead }));
    EXPECT_EQ(settings->onboardingLastStep(), OnboardingStep::Profile);
}

TEST_F(OnboardingWizardTest, ResumesWhereItWasLeft) {
    openAt(OnboardingStep::Permissions);
    EXPECT_EQ(wizard->currentStepIndex(), 1);
    openAt(OnboardingStep::DictationTest);
    EXPECT_EQ(wizard->currentStepIndex(), 2);
}

TEST_F(OnboardingWizardTest, BeginsAnewOnceFinished) {
    settings->markOnboardingCompleted();
    open();
    EXPECT_EQ(wizard->currentStep(), OnboardingStep::Profile);
    wizard->advance();
    EXPECT_EQ(wizard->currentStep(), OnboardingStep::Permissions);
    EXPECT_EQ(settings->onboardingLastStep(), OnboardingStep::Completed);
    EXPECT_TRUE(settings->hasCompletedOnboarding());
}

TEST_F(OnboardingWizardTest, NameGatesTheFirstStep) {
    open();
    for (const char *name : { "User", "uSER", "  ", " user " }) {
        wizard->setDisplayName(QString::fromLatin1(name));
        EXPECT_FALSE(wizard->canAdvance()) << name;
    }
    SignalCounter changes(&*wizard, &OnboardingWizardModel::progressChanged);
    wizard->setDisplayName(QStringLiteral("Ana"));
    EXPECT_TRUE(wizard->canAdvance());
    EXPECT_GE(changes.count(), 1);
    EXPECT_EQ(settings->profileDisplayName(), QStringLiteral("Ana"));
    EXPECT_EQ(wizard->stepSymbols(), QStringList({ checked, ahead, ahead }));
}

TEST_F(OnboardingWizardTest, BothRightsGateTheSecondStep) {
    openAt(OnboardingStep::Permissions);
    for (const bool mayListen : { false, true }) {
        for (const bool mayTap : { false, true }) {
            microphone.present = mayListen ? Authorized : Denied;
            fakes.hotkey->isTrusted = mayTap;
            fakes.application.didBecomeActive();
            EXPECT_EQ(wizard->microphoneGranted(), mayListen);
            EXPECT_EQ(wizard->accessibilityGranted(), mayTap);
            EXPECT_EQ(wizard->canAdvance(), mayListen && mayTap);
        }
    }
    EXPECT_EQ(wizard->stepSymbols(), QStringList({ checked, checked, ahead }));
}

TEST_F(OnboardingWizardTest, RightGivenElsewhereIsSeenWhenTheProgramComesToTheFront) {
    microphone.present = Denied;
    openAt(OnboardingStep::Permissions);
    bool seen = false;
    QObject::connect(&*wizard, &OnboardingWizardModel::permissionsChanged, &*wizard,
        [&] { seen = wizard->microphoneGranted(); });
    microphone.present = Authorized;
    fakes.application.didBecomeActive();
    EXPECT_TRUE(seen);
}

TEST_F(OnboardingWizardTest, AsksForTheMicrophone) {
    microphone.present = NotDetermined;
    openAt(OnboardingStep::Permissions);
    EXPECT_EQ(wizard->microphoneProblem(), QString());
    wizard->grantMicrophone();
    SignalCounter changes(&*wizard, &OnboardingWizardModel::permissionsChanged);
    microphone.answerAll(true);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(wizard->canAdvance());
}

TEST_F(OnboardingWizardTest, RefusedMicrophoneTellsTheWayOut) {
    microphone.present = NotDetermined;
    openAt(OnboardingStep::Permissions);
    wizard->grantMicrophone();
    microphone.answerAll(false);
    EXPECT_FALSE(wizard->canAdvance());
    const QString problem = QStringLiteral(
        "Access denied. Allow Tolmi to use the microphone in your desktop's privacy settings.");
    EXPECT_EQ(wizard->microphoneProblem(), problem);
    microphone.present = Restricted;
    EXPECT_EQ(wizard->microphoneProblem(), problem);
}

TEST_F(OnboardingWizardTest, AnswerAfterTheEndOfTheWizardHarmsNobody) {
    microphone.present = NotDetermined;
    openAt(OnboardingStep::Permissions);
    wizard->grantMicrophone();
    wizard.reset();
    microphone.answerAll(true);
}

TEST_F(OnboardingWizardTest, AsksForTheKeys) {
    fakes.hotkey->isTrusted = false;
    fakes.application.didBecomeActive();
    openAt(OnboardingStep::Permissions);
    wizard->grantAccessibility();
    EXPECT_EQ(fakes.journal.count(QStringLiteral("hotkey.prompt")), 1);
    fakes.hotkey->isTrusted = true;
    clock.advance(1);
    EXPECT_TRUE(wizard->canAdvance());
}

TEST_F(OnboardingWizardTest, MissingKeysTellTheReasonOfTheSystem) {
    fakes.hotkey->isTrusted = false;
    fakes.application.didBecomeActive();
    openAt(OnboardingStep::Permissions);
    EXPECT_EQ(wizard->accessibilityProblem(),
        QStringLiteral(
            "Access missing. Allow Tolmi to watch and press keys when your desktop asks, or in its "
            "settings."));
    accessibility.availability = Availability::unavailable(QStringLiteral("There is no X display."));
    EXPECT_EQ(wizard->accessibilityProblem(), QStringLiteral("Access missing. There is no X display."));
    settings->setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(wizard->accessibilityProblem(), QStringLiteral("Lipseste accesul. There is no X display."));
}

TEST_F(OnboardingWizardTest, GoesForthAndBackAndRemembersEachStep) {
    open();
    std::vector<OnboardingStep> visited;
    QObject::connect(&*wizard, &OnboardingWizardModel::currentStepChanged, &*wizard, [&] {
        visited.push_back(wizard->currentStep());
        EXPECT_EQ(settings->onboardingLastStep(), wizard->currentStep());
    });
    wizard->goBack();
    EXPECT_TRUE(visited.empty());
    wizard->advance();
    EXPECT_EQ(wizard->continueButtonTitle(), QStringLiteral("Continue"));
    wizard->advance();
    EXPECT_EQ(wizard->continueButtonTitle(), QStringLiteral("Finish onboarding"));
    wizard->goBack();
    wizard->goBack();
    using enum OnboardingStep;
    EXPECT_EQ(visited, (std::vector { Permissions, DictationTest, Permissions, Profile }));
    EXPECT_EQ(closings, 0);
}

TEST_F(OnboardingWizardTest, SkippingLeavesTheStepAndTheReminder) {
    openAt(OnboardingStep::Permissions);
    wizard->skip();
    EXPECT_EQ(closings, 1);
    EXPECT_EQ(settings->onboardingLastStep(), OnboardingStep::Permissions);
    EXPECT_TRUE(settings->onboardingSkippedAt().has_value());
    EXPECT_TRUE(settings->shouldShowOnboardingReminder());
}

TEST_F(OnboardingWizardTest, DictationOfTheButtonPassesTheTestAndFinishes) {
    openAt(OnboardingStep::DictationTest);
    EXPECT_FALSE(wizard->canAdvance());
    fakes.recorder->permission.give(true);
    press();
    EXPECT_EQ(manager->state(), Kind::Recording);
    fakes.transcriber->outcomes.give(outcome(QStringLiteral("hello")));
    SignalCounter changes(&*wizard, &OnboardingWizardModel::progressChanged);
    press();
    EXPECT_TRUE(wizard->dictationTestCompleted());
    EXPECT_TRUE(wizard->canAdvance());
    EXPECT_GE(changes.count(), 1);
    wizard->advance();
    EXPECT_EQ(closings, 1);
    EXPECT_TRUE(settings->hasCompletedOnboarding());
    EXPECT_EQ(settings->onboardingLastStep(), OnboardingStep::Completed);
}

TEST_F(OnboardingWizardTest, DictationOfTheKeyPassesTheTestAtAnyStep) {
    open();
    cleanEnd(QStringLiteral("hello"));
    EXPECT_TRUE(wizard->dictationTestCompleted());
    EXPECT_EQ(wizard->currentStep(), OnboardingStep::Profile);
}

TEST_F(OnboardingWizardTest, EarlierDictationsDoNotCount) {
    cleanEnd(QStringLiteral("before"));
    cleanEnd(QStringLiteral("before too"));
    openAt(OnboardingStep::DictationTest);
    EXPECT_FALSE(wizard->dictationTestCompleted());
    history->deleteEntry(history->entries().front().id);
    cleanEnd(QStringLiteral("in the place of the deleted one"));
    EXPECT_FALSE(wizard->dictationTestCompleted());
    cleanEnd(QStringLiteral("one more"));
    EXPECT_TRUE(wizard->dictationTestCompleted());
    history->clear();
    EXPECT_TRUE(wizard->dictationTestCompleted());
}

TEST_F(OnboardingWizardTest, PressWhileBusyOrInAnErrorDoesNothing) {
    openAt(OnboardingStep::DictationTest);
    reach(Kind::Error);
    press();
    EXPECT_EQ(manager->state().kind(), Kind::Error);
    clock.advance(3);
    reach(Kind::Transcribing);
    press();
    EXPECT_EQ(manager->state(), Kind::Transcribing);
    EXPECT_EQ(fakes.transcriber->requests.size(), 1U);
}

TEST_F(OnboardingWizardTest, PressDiesWithTheWizard) {
    openAt(OnboardingStep::DictationTest);
    wizard->runDictationAction();
    wizard.reset();
    clock.runPosted();
    EXPECT_EQ(manager->state(), Kind::Idle);
}

TEST_F(OnboardingWizardTest, TellsWhatIsMissingForADictation) {
    openAt(OnboardingStep::DictationTest);
    EXPECT_EQ(wizard->dictationProblems(), QStringList());
    SignalCounter changes(&*wizard, &OnboardingWizardModel::dictationChanged);
    settings->setWhisperBinaryPath(QStringLiteral("/nowhere/whisper-cli"));
    settings->setModelPath(QStringLiteral("/nowhere/model.bin"));
    EXPECT_EQ(changes.count(), 2);
    microphone.present = Denied;
    EXPECT_EQ(wizard->dictationProblems(),
        QStringList({ QStringLiteral("Microphone: Access denied. Allow Tolmi to use the microphone in your "
                                     "desktop's privacy settings."),
            QStringLiteral("whisper-cli: Binary missing or not executable."),
            QStringLiteral("Whisper model: Model file missing. Choose \"Skip for now\" and set the path in "
                           "Settings > Engine; this step waits for you.") }));
    settings->setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(wizard->dictationProblems().last(),
        u"Model Whisper: Fisier model lipsa. Alege \"Sari momentan\" si seteaza calea in Setari > Engine; "
        u"acest pas te asteapta.");
}

TEST_F(OnboardingWizardTest, KeepsTheReasonOfAFailedStart) {
    openAt(OnboardingStep::DictationTest);
    fakes.live->startFailures.push_back(std::make_exception_ptr(failure("no source")));
    fakes.recorder->startFailures.push_back(std::make_exception_ptr(failure("No such device")));
    fakes.recorder->permission.give(true);
    loggedBy([this] { keyDown(); });
    ASSERT_EQ(manager->state().kind(), Kind::Error);
    clock.advance(3);
    EXPECT_EQ(wizard->dictationProblems(),
        QStringList({ QStringLiteral(
            "No such device. Connect a microphone, or choose one in the system's sound settings.") }));
    record();
    EXPECT_EQ(wizard->dictationProblems(), QStringList());
}

TEST_F(OnboardingWizardTest, KeepsTheReasonOfAFailedTranscription) {
    openAt(OnboardingStep::DictationTest);
    record();
    fakes.transcriber->outcomes.fail(failure("The model is broken."));
    keyUp();
    clock.advance(3);
    EXPECT_EQ(wizard->dictationProblems(), QStringList({ QStringLiteral("The model is broken.") }));
    EXPECT_FALSE(wizard->dictationTestCompleted());
}

TEST_F(OnboardingWizardTest, SilenceIsTold) {
    openAt(OnboardingStep::DictationTest);
    cleanEnd(QString());
    EXPECT_FALSE(wizard->dictationTestCompleted());
    EXPECT_EQ(wizard->dictationProblems().size(), 1);
    EXPECT_TRUE(wizard->dictationProblems().front().startsWith(QStringLiteral("Nothing was heard.")));
    settings->setUiLanguage(AppLanguage::Romanian);
    EXPECT_TRUE(wizard->dictationProblems().front().startsWith(QStringLiteral("Nu s-a auzit nimic.")));
}

TEST_F(OnboardingWizardTest, OffersThePresets) {
    open();
    const QVariantList presets = wizard->avatarPresets();
    ASSERT_EQ(presets.size(), 4);
    EXPECT_EQ(presets[1].toMap().value(QStringLiteral("symbol")), QStringLiteral("briefcase.circle.fill"));
    EXPECT_EQ(presets[1].toMap().value(QStringLiteral("value")), QStringLiteral("briefcase.circle.fill"));
    EXPECT_EQ(presets[1].toMap().value(QStringLiteral("text")),
        L10n::profileAvatarName(ProfileAvatarPreset::Work, AppLanguage::English));
    wizard->setAvatarPreset(QStringLiteral("briefcase.circle.fill"));
    EXPECT_EQ(wizard->avatarPreset(), QStringLiteral("briefcase.circle.fill"));
    EXPECT_EQ(settings->profileAvatarID(), QStringLiteral("briefcase.circle.fill"));
}

TEST_F(OnboardingWizardTest, AvatarFailuresAreToldUntilDismissed) {
    open();
    EXPECT_TRUE(wizard->canImportAvatar());
    wizard->importAvatar();
    ASSERT_TRUE(failImport);
    failImport(L10n::Key::profileAvatarErrorTooLarge);
    EXPECT_EQ(
        wizard->avatarErrorMessage(), QStringLiteral("This file is too large. Choose an image under 10MB."));
    wizard->dismissAvatarError();
    EXPECT_EQ(wizard->avatarErrorMessage(), QString());
    wizard->removeAvatar();
    EXPECT_EQ(wizard->avatarErrorMessage(), QString());
    removal = L10n::Key::profileAvatarErrorGeneric;
    wizard->removeAvatar();
    EXPECT_EQ(wizard->avatarErrorMessage(), QStringLiteral("Could not update the avatar. Please try again."));
}

TEST_F(OnboardingWizardTest, APictureThatAFailedImportHasRemovedIsNotShown) {
    const QTemporaryDir disk;
    const QString thumbnail = disk.filePath(QStringLiteral("Tolmi/profile/avatar-thumb.jpg"));
    ASSERT_TRUE(QDir().mkpath(disk.filePath(QStringLiteral("Tolmi/profile"))));
    ASSERT_TRUE(QImage(4, 4, QImage::Format_RGB32).save(thumbnail, "JPEG"));
    fileManager.applicationSupport = FileURL(disk.path());
    fileManager.files[disk.filePath(QStringLiteral("Tolmi/profile/avatar-original.png"))] = "image";
    fileManager.files[thumbnail] = "thumb";
    settings->setCustomAvatar(
        QStringLiteral("profile/avatar-original.png"), QStringLiteral("profile/avatar-thumb.jpg"));
    open();
    EXPECT_TRUE(wizard->hasCustomAvatar());
    EXPECT_FALSE(wizard->profile()->picture().isNull());
    wizard->importAvatar();
    fileManager.files.erase(thumbnail);
    failImport(L10n::Key::profileAvatarErrorDecodeFailed);
    EXPECT_FALSE(wizard->hasCustomAvatar());
    EXPECT_TRUE(wizard->profile()->picture().isNull());
}

TEST_F(OnboardingWizardTest, KnowsOfTheUsersOwnPicture) {
    open();
    EXPECT_FALSE(wizard->hasCustomAvatar());
    const QString folder = QStringLiteral("/home/user/.local/share/Tolmi/");
    fileManager.files[folder + QStringLiteral("profile/avatar-original.png")] = "image";
    fileManager.files[folder + QStringLiteral("profile/avatar-thumb.jpg")] = "thumb";
    settings->setCustomAvatar(
        QStringLiteral("profile/avatar-original.png"), QStringLiteral("profile/avatar-thumb.jpg"));
    EXPECT_TRUE(wizard->hasCustomAvatar());
    settings->clearCustomAvatar();
    EXPECT_FALSE(wizard->hasCustomAvatar());
}
