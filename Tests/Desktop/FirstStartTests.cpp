// The first start of the real program for a user who has nothing of it yet: from an empty home to a
// dictation.

#include "Desktop/ProgramInUse.h"

#include "dictate/Dictation.h"
#include "dictate/Home.h"

#include "Support/Print.h"
#include "Support/UsualOllamaPort.h"

#include <QFile>

using State = AccessibleElement::State;

namespace {
// A new user's interface is Romanian.
const QString title = QStringLiteral("Bine ai venit in Tolmi");
const QString forward = QStringLiteral("Continua");
const QString finish = QStringLiteral("Finalizeaza onboardingul");
const QString record = QStringLiteral("Porneste inregistrarea");
const QString stop = QStringLiteral("Stop + Transcriere");
const QString pending = QStringLiteral("Inregistreaza si transcrie o data pentru a finaliza pasul.");
const QString done = QStringLiteral("Testul de dictare este complet.");
const QString pathHelp
    = QStringLiteral("Alege \"Sari momentan\" si seteaza calea in Setari > Engine; acest pas te asteapta.");

class FirstStart : public ProgramInUse {
protected:
    void startWithTheWizard() {
        start();
        enterDialog(title);
    }

    bool isUsable(const QString &button) const {
        return control(QStringLiteral("push button"), button).is(State::Focusable);
    }

    /// Goes on to the next step when this one is complete.
    void goOn(const QString &button = forward) {
        const AccessibleElement goOn = control(QStringLiteral("push button"), button);
        ASSERT_TRUE(becomesUsable(goOn)) << front().described().toStdString();
        m_user.click(goOn.rectangle().center());
    }

    void introduceOneself() {
        ASSERT_TRUE(fill(control(QStringLiteral("text"), QStringLiteral("Nume afisat")), "Ana Maria"));
        goOn();
        ASSERT_TRUE(comesToBeStored("tolmi.onboarding.lastStep", "permissions"));
    }

    void goToTheDictation() {
        introduceOneself();
        goOn();
        control(QStringLiteral("label"), pending);
    }

    void dictateByTheButton(const QString &sample) {
        click(QStringLiteral("push button"), record);
        ASSERT_TRUE(waitUntil([this] { return m_program.state() == u"recording"; }, patience));
        ASSERT_TRUE(playIntoMicrophone(QStringLiteral(TOLMI_SAMPLES_DIR "/") + sample));
        click(QStringLiteral("push button"), stop);
    }
};
} // namespace

TEST_F(FirstStart, LeadsFromAnEmptyHomeToADictation) {
    const UsualOllamaPort port;
    if (!port.isHeld())
        GTEST_SKIP() << "something listens at Ollama's port, and this dictation would go there";
    ASSERT_TRUE(installWhisperCLI(QStringLiteral(TOLMI_TEST_WHISPER_CLI)));
    ASSERT_FALSE(QFile::exists(settingsPath()));
    startWithTheWizard();
    const QSize sheet = dialog(title).rectangle().size();
    EXPECT_EQ(sheet, sheet.expandedTo({ 640, 460 }));
    EXPECT_FALSE(isUsable(forward)) << "a name comes first";
    introduceOneself();
    goOn();
    control(QStringLiteral("label"), pending);
    EXPECT_FALSE(isUsable(finish)) << "a dictation comes first";

    dictateByTheButton(QStringLiteral("romanian-1.wav"));
    // Transcribing takes as long as the machine is slow.
    ASSERT_TRUE(waitUntil([] { return historyEntries().size() == 1; }, 3 * patience));
    control(QStringLiteral("label"), done);
    goOn(finish);
    EXPECT_TRUE(leavesDialog(title));
    EXPECT_TRUE(comesToBeStored("tolmi.onboarding.completed", true));
    EXPECT_EQ(stored("tolmi.onboarding.lastStep"), QJsonValue("completed"));
    EXPECT_EQ(stored("tolmi.profileDisplayName"), QJsonValue("Ana Maria"));

    ASSERT_TRUE(m_program.quit());
    start();
    control(QStringLiteral("push button"), record);
    EXPECT_FALSE(isThere(QStringLiteral("dialog"), title));
}

TEST_F(FirstStart, SkippedItComesAgainAtTheStepWhereItWasLeft) {
    startWithTheWizard();
    introduceOneself();
    click(QStringLiteral("push button"), QStringLiteral("Sari momentan"));
    EXPECT_TRUE(leavesDialog(title));
    EXPECT_EQ(stored("tolmi.onboarding.lastStep"), QJsonValue("permissions"));

    ASSERT_TRUE(m_program.quit());
    startWithTheWizard();
    goOn();
    control(QStringLiteral("label"), pending);
}

TEST_F(FirstStart, WithoutWhisperCliTheWizardSaysSoAndWhatToDo) {
    startWithTheWizard();
    goToTheDictation();
    control(
        QStringLiteral("label"), QStringLiteral("whisper-cli: Binar lipsa sau neexecutabil. ") + pathHelp);
    EXPECT_FALSE(isThere(QStringLiteral("label"), QStringLiteral("Model Whisper: Fisier model lipsa.")));
    dictateByTheButton(QStringLiteral("romanian-1.wav"));
    EXPECT_TRUE(waitUntil([this] { return m_program.state() == u"idle"; }, patience));
    EXPECT_TRUE(isThere(QStringLiteral("label"), pending));
    EXPECT_FALSE(isUsable(finish));
}

TEST_F(FirstStart, WithoutAModelTheWizardSaysSoAndWhatToDo) {
    ASSERT_TRUE(prepareHome({ .whisperCLI = QStringLiteral(TOLMI_TEST_WHISPER_CLI),
        .model = QStringLiteral("/nowhere/ggml-missing.bin"),
        .settings = { { "tolmi.uiLanguage", "ro" }, { "tolmi.onboarding.completed", false } } }));
    startWithTheWizard();
    goToTheDictation();
    control(QStringLiteral("label"), QStringLiteral("Model Whisper: Fisier model lipsa. ") + pathHelp);
}

TEST_F(FirstStart, WithoutASoundServerTheWizardSaysSoAndWhatToDo) {
    ASSERT_TRUE(installWhisperCLI(QStringLiteral(TOLMI_TEST_WHISPER_CLI)));
    startWithTheWizard();
    goToTheDictation();
    ASSERT_EQ(QProcess::execute("pactl", { "exit" }), 0);
    click(QStringLiteral("push button"), record);
    const auto isAdvised = [this] {
        return front().described().contains("Conecteaza un microfon sau alege unul in setarile de sunet");
    };
    EXPECT_TRUE(waitUntil(isAdvised, patience)) << front().described().toStdString();
}
