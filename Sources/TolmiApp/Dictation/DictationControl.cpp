#include "TolmiApp/Dictation/DictationControl.h"

#include "Foundation/Clock.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiApp/Texts/L10n.h"

#include <QScopeGuard>

using Kind = DictationState::Kind;

DictationControl::DictationControl(std::shared_ptr<DictationFlowManager> flow, Clock &clock)
    : m_flow(std::move(flow))
    , m_clock(clock) {
    connect(m_flow.get(), &DictationFlowManager::stateChanged, this, &DictationControl::stateChanged);
    connect(
        m_flow.get(), &DictationFlowManager::audioLevelChanged, this, &DictationControl::audioLevelChanged);
    connect(&m_flow->settings(), &SettingsStore::uiLanguageChanged, this, &DictationControl::stateChanged);
}

QString DictationControl::stateIcon() const {
    switch (kind()) {
    case Kind::Idle:
        return QStringLiteral("checkmark.seal.fill");
    case Kind::Recording:
        return QStringLiteral("waveform.circle.fill");
    case Kind::Transcribing:
    case Kind::OptimizingQuality:
    case Kind::Refining:
    case Kind::Pasting:
        return QStringLiteral("hourglass");
    case Kind::Done:
        return QStringLiteral("checkmark.circle.fill");
    case Kind::Error:
        return QStringLiteral("exclamationmark.triangle.fill");
    }
    Q_UNREACHABLE();
}

DictationControl::Tone DictationControl::stateTone() const {
    switch (kind()) {
    case Kind::Idle:
    case Kind::Done:
        return Tone::Success;
    case Kind::Recording:
        return Tone::Accent;
    case Kind::Transcribing:
    case Kind::OptimizingQuality:
    case Kind::Refining:
    case Kind::Pasting:
        return Tone::Neutral;
    case Kind::Error:
        return Tone::Danger;
    }
    Q_UNREACHABLE();
}

QString DictationControl::stateLabel() const {
    return L10n::dictationStateLabel(m_flow->state(), language());
}

bool DictationControl::isProcessing() const {
    return m_flow->state().isProcessing();
}

QString DictationControl::processingMessage() const {
    if (!isProcessing())
        return {};
    const auto key = kind() == Kind::OptimizingQuality ? L10n::Key::stateOptimizingQuality
                                                       : L10n::Key::dictationLiveProcessing;
    return L10n::text(key, language());
}

QString DictationControl::buttonTitle() const {
    const auto key
        = isRecording() ? L10n::Key::commandCenterStopTranscribe : L10n::Key::commandCenterStartRecording;
    return L10n::text(key, language());
}

void DictationControl::runAction() {
    if (m_isRunningAction || isProcessing())
        return;
    m_isRunningAction = true;
    m_clock.post([control = QPointer(this)] {
        if (control)
            launch(runToItsEnd(control, control->m_flow));
    });
}

Task<> DictationControl::runToItsEnd(
    QPointer<DictationControl> control, std::shared_ptr<DictationFlowManager> flow) {
    const auto ending = qScopeGuard([control] {
        if (control)
            control->m_isRunningAction = false;
    });
    co_await press(flow);
}

Task<> DictationControl::press(std::shared_ptr<DictationFlowManager> flow) {
    const Kind kind = flow->state().kind();
    if (kind == Kind::Recording)
        co_await flow->stopAndProcess();
    else if (kind == Kind::Idle || kind == Kind::Done)
        co_await flow->startDictation();
}

AppLanguage DictationControl::language() const {
    return m_flow->settings().uiLanguage();
}
