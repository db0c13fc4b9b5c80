#pragma once

#include "Platform/RemoteControl.h"
#include "TolmiApp/Dictation/DictationFlowManager.h"
#include "TolmiApp/Dictation/GlobalHotkeyManager.h"

class Clock;

/// What other programs of the user can have this one do. The commands for the dictation key are sources of
/// the key beside the keyboard; a press of theirs also ends when its recording ends otherwise. Main thread
/// only.
class ControlCommands final : public QObject, public RemoteCommands {
    Q_OBJECT

public:
    /// What the commands act upon.
    struct Program {
        std::shared_ptr<DictationFlowManager> flow;
        std::shared_ptr<GlobalHotkeyManager> hotkey;
        /// Outlives the commands.
        Clock &clock;
        std::function<void()> showStudio;
        std::function<void()> showSettings;
        /// Ends the program.
        std::function<void()> quit;
        std::function<std::vector<OperationMethod>()> methods;
        QString version;
    };

    /// Has `remote` serve these commands. It outlives them.
    ControlCommands(Program program, RemoteControl &remote);

    std::optional<RemoteRefusal> run(const RemoteRequest &request) override;
    void callerLeft(const QString &caller) override;
    RemoteStatus status() const override;
    std::vector<OperationMethod> methods() const override { return m_program.methods(); }

private:
    using Source = DictationKeySources::Source;
    using Refusal = std::optional<RemoteRefusal>;

    DictationState::Kind kind() const { return m_program.flow->state().kind(); }
    bool isFreeForAPress() const;
    Refusal press(const Source &source);
    void release(const Source &source);
    Refusal keyDown(quint64 time);
    void keyUp(quint64 time);
    Refusal stop();
    Refusal toggle();
    Refusal later(const std::function<void()> &work);
    void followState();

    const Program m_program;
    RemoteControl &m_remote;
    DictationState::Kind m_previousState;
    QString m_lastError;
    /// Whether who holds the key has let go of it before the recording began.
    bool m_isReleasePending = false;
    /// When the binding of the latest key-up ran.
    quint64 m_lastKeyUp = 0;
};
