#pragma once

#include "Platform/Pasteboard.h"
#include "TolmiApp/Dictation/DictationControl.h"

/// The stage for dictating from inside the window: the dictation and what came of the last one. Main thread
/// only.
class DictationLiveModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(DictationControl *dictation READ dictation CONSTANT)
    /// Final text of the last dictation of this run; may be empty.
    Q_PROPERTY(QString lastTranscript READ lastTranscript NOTIFY lastTranscriptChanged)

public:
    /// What the stage asks of the platform; all of it outlives the model.
    struct Platform {
        Clock &clock;
        Pasteboard &pasteboard;
    };

    DictationLiveModel(std::shared_ptr<DictationFlowManager> flow, const Platform &platform);

    DictationControl *dictation() { return &m_dictation; }
    QString lastTranscript() const { return m_flow->lastTranscript(); }

    /// Puts the last transcript on the clipboard.
    Q_INVOKABLE void copyLastTranscript();

Q_SIGNALS:
    void lastTranscriptChanged();

private:
    const std::shared_ptr<DictationFlowManager> m_flow;
    Pasteboard &m_pasteboard;
    DictationControl m_dictation;
};
