#pragma once

#include "TolmiApp/Dictation/DictationFlowManager.h"

#include <QPointer>

#include <memory>

class Clock;

/// The dictation as a workspace shows and drives it: the state in its symbol, tone and words, and the button
/// that starts and stops it, the same flow that the key drives. Main thread only.
class DictationControl final : public QObject {
    Q_OBJECT
    /// Name of the symbol that stands for the state.
    Q_PROPERTY(QString stateIcon READ stateIcon NOTIFY stateChanged)
    Q_PROPERTY(DictationControl::Tone stateTone READ stateTone NOTIFY stateChanged)
    /// The state's name.
    Q_PROPERTY(QString stateLabel READ stateLabel NOTIFY stateChanged)
    /// What went wrong; empty unless the state is an error.
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY stateChanged)
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY stateChanged)
    /// A recording is on its way to the paste; the button can do nothing.
    Q_PROPERTY(bool isProcessing READ isProcessing NOTIFY stateChanged)
    /// What one waits for; empty unless something is being processed.
    Q_PROPERTY(QString processingMessage READ processingMessage NOTIFY stateChanged)
    Q_PROPERTY(QString buttonTitle READ buttonTitle NOTIFY stateChanged)
    /// Smoothed level of the voice, 0 to 1.
    Q_PROPERTY(double audioLevel READ audioLevel NOTIFY audioLevelChanged)

public:
    /// How a state is coloured, in the order of the tones of a status pill.
    enum class Tone {
        Neutral,
        Success,
        Accent,
        Danger,
    };
    Q_ENUM(Tone)

    /// `clock` outlives the control.
    DictationControl(std::shared_ptr<DictationFlowManager> flow, Clock &clock);

    QString stateIcon() const;
    Tone stateTone() const;
    QString stateLabel() const;
    QString errorMessage() const { return m_flow->state().message(); }
    bool isRecording() const { return kind() == DictationState::Kind::Recording; }
    bool isProcessing() const;
    QString processingMessage() const;
    QString buttonTitle() const;
    double audioLevel() const { return m_flow->audioLevel(); }

    /// A press of the button in a later turn of the main loop. Presses before the last one has done all of
    /// its work do nothing.
    Q_INVOKABLE void runAction();
    /// Whether a press is at work.
    bool isRunningAction() const { return m_isRunningAction; }

    /// What a press does: a recording is stopped and processed, and one is started where the flow is ready
    /// for it; in any other state, an error too, nothing happens.
    static Task<> press(std::shared_ptr<DictationFlowManager> flow);

Q_SIGNALS:
    /// The state or the language of the interface.
    void stateChanged();
    void audioLevelChanged();

private:
    DictationState::Kind kind() const { return m_flow->state().kind(); }
    AppLanguage language() const;
    static Task<> runToItsEnd(QPointer<DictationControl> control, std::shared_ptr<DictationFlowManager> flow);

    const std::shared_ptr<DictationFlowManager> m_flow;
    Clock &m_clock;
    bool m_isRunningAction = false;
};
