#include "TolmiApp/Control/ControlCommands.h"

#include "Foundation/Clock.h"
#include "Foundation/Log.h"
#include "TolmiCore/TranscriptionEngine.h"

#include <QMetaEnum>

#include <algorithm>

using Kind = DictationState::Kind;

namespace {
const DictationKeySources::Source binding = QStringLiteral("binding");
const DictationKeySources::Source latch = QStringLiteral("latch");

DictationKeySources::Source sourceOf(const QString &caller) {
    return QStringLiteral("caller ") + caller;
}

bool isLeftDown(const std::optional<DictationKeySources::Source> &holder) {
    return holder == latch || holder == binding;
}
} // namespace

ControlCommands::ControlCommands(Program program, RemoteControl &remote)
    : m_program(std::move(program))
    , m_remote(remote)
    , m_previousState(kind()) {
    connect(m_program.flow.get(), &DictationFlowManager::stateChanged, this, &ControlCommands::followState);
    const Availability availability = m_remote.serve(*this);
    if (!availability.isAvailable())
        logLine(QStringLiteral("Tolmi: tolmictl will not work: ") + availability.reason);
}

std::optional<RemoteRefusal> ControlCommands::run(const RemoteRequest &request) {
    switch (request.command) {
    case RemoteCommand::Press:
        return press(sourceOf(request.caller));
    case RemoteCommand::Release:
        release(sourceOf(request.caller));
        return {};
    case RemoteCommand::KeyDown:
        return keyDown(request.time);
    case RemoteCommand::KeyUp:
        keyUp(request.time);
        return {};
    case RemoteCommand::Start:
        return press(latch);
    case RemoteCommand::Stop:
        return stop();
    case RemoteCommand::Toggle:
        return toggle();
    case RemoteCommand::ShowStudio:
        return later(m_program.showStudio);
    case RemoteCommand::ShowSettings:
        return later(m_program.showSettings);
    case RemoteCommand::Quit:
        return later(m_program.quit);
    }
    Q_UNREACHABLE();
}

void ControlCommands::callerLeft(const QString &caller) {
    release(sourceOf(caller));
}

RemoteStatus ControlCommands::status() const {
    const char *state = QMetaEnum::fromType<Kind>().valueToKey(int(kind()));
    return { QString::fromLatin1(state).toLower(), m_program.flow->audioLevel(), m_lastError,
        m_program.version };
}

/// A recording that a button began is taken over as the key does it, which ends it by its key-up.
bool ControlCommands::isFreeForAPress() const {
    return kind() == Kind::Idle || kind() == Kind::Done || kind() == Kind::Recording;
}

std::optional<RemoteRefusal> ControlCommands::press(const Source &source) {
    using Press = GlobalHotkeyManager::Press;
    if (!isFreeForAPress())
        return RemoteRefusal::Busy;
    switch (m_program.hotkey->press(source)) {
    case Press::Counts:
    case Press::Repeated:
        m_isReleasePending = false;
        return {};
    case Press::HeldElsewhere:
        return RemoteRefusal::HeldElsewhere;
    case Press::Locked:
        return RemoteRefusal::Locked;
    }
    Q_UNREACHABLE();
}

/// Programs are quicker than fingers, and to the flow a release before the recording has begun is none.
void ControlCommands::release(const Source &source) {
    if (kind() == Kind::Recording)
        m_program.hotkey->release(source);
    else if (m_program.hotkey->holder() == source)
        m_isReleasePending = true;
}

/// The two programs of a short press may arrive in the wrong order, and the recording would never end.
std::optional<RemoteRefusal> ControlCommands::keyDown(quint64 time) {
    const bool isOvertaken = time > 0 && time < m_lastKeyUp;
    return isOvertaken ? std::nullopt : press(binding);
}

void ControlCommands::keyUp(quint64 time) {
    m_lastKeyUp = std::max(m_lastKeyUp, time);
    release(binding);
}

std::optional<RemoteRefusal> ControlCommands::stop() {
    const std::optional<Source> holder = m_program.hotkey->holder();
    if (isLeftDown(holder))
        release(*holder);
    else if (holder)
        return RemoteRefusal::HeldElsewhere;
    else if (kind() == Kind::Recording)
        launch(m_program.flow->stopAndProcess());
    return {};
}

std::optional<RemoteRefusal> ControlCommands::toggle() {
    const bool isToBegin = isLeftDown(m_program.hotkey->holder()) && !m_isReleasePending;
    return kind() == Kind::Recording || isToBegin ? stop() : press(latch);
}

/// Whoever asks has its answer first.
std::optional<RemoteRefusal> ControlCommands::later(const std::function<void()> &work) {
    m_program.clock.post(work);
    return {};
}

void ControlCommands::followState() {
    const Kind previous = std::exchange(m_previousState, kind());
    if (kind() == Kind::Recording)
        m_lastError.clear();
    if (kind() == Kind::Error) {
        m_isReleasePending = false;
        m_lastError = TranscriptionEngineError::withoutOutput(m_program.flow->state().message());
    }
    // Nobody may ever let go of a press whose recording has failed, or was ended in a window.
    const bool isOver = kind() == Kind::Error || (previous == Kind::Recording && kind() != Kind::Recording);
    if (isOver)
        m_program.hotkey->forgetOtherPress();
    m_remote.announce();
    if (kind() == Kind::Recording && std::exchange(m_isReleasePending, false))
        release(*m_program.hotkey->holder());
}
