#pragma once

#include "App/Studio/StudioFixture.h"
#include "TolmiApp/Shell/ViewTexts.h"

/// A dictation flow with a fake platform and a stopped clock, for tests of views that drive it.
class FlowFixture : public QObject, protected StudioFixture {
    Q_OBJECT
    Q_PROPERTY(QObject *texts READ texts CONSTANT)
    Q_PROPERTY(QString lastTranscript READ lastTranscript)
    /// The plain text on the clipboard.
    Q_PROPERTY(QString copiedText READ copiedText)

public:
    FlowFixture() { createSetUp(); }

    QObject *texts() { return &m_texts; }
    QString lastTranscript() const { return manager->lastTranscript(); }
    QString copiedText() const;

    /// Takes the idle flow to the state of that name.
    Q_INVOKABLE void reach(const QString &kind);
    /// Runs a whole dictation until idle again.
    Q_INVOKABLE void dictateText(const QString &text);
    /// Grants the microphone for the next recording.
    Q_INVOKABLE void allowRecording() { fakes.recorder->permission.give(true); }
    /// Makes the next transcription return this text.
    Q_INVOKABLE void prepareTranscript(const QString &text) {
        fakes.transcriber->outcomes.give(outcome(text));
    }
    Q_INVOKABLE void setLevel(double level);
    Q_INVOKABLE void advance(double seconds) { clock.advance(seconds); }
    /// Runs posted work.
    Q_INVOKABLE void runPosted() { clock.runPosted(); }
    Q_INVOKABLE void speakRomanian() { settings->setUiLanguage(AppLanguage::Romanian); }
    Q_INVOKABLE void setDisplayName(const QString &name) { settings->setProfileDisplayName(name); }
    Q_INVOKABLE void finishOnboarding() { settings->markOnboardingCompleted(); }

private:
    void TestBody() override { }

    ViewTexts m_texts { *settings, PlatformTexts::forLinux() };
};
