#include "TolmiApp/Dictation/GlobalHotkeyManager.h"

#include "Foundation/Clock.h"
#include "Platform/DictationKey.h"
#include "Platform/SessionLock.h"

#include <QThread>

namespace {
constexpr qint64 targetKeyCode = DictationKey::keyCode;
} // namespace

GlobalHotkeyManager::GlobalHotkeyManager(Platform platform)
    : m_taps(platform.taps)
    , m_right(platform.right)
    , m_lock(platform.lock)
    , m_clock(platform.clock) { }

GlobalHotkeyManager::~GlobalHotkeyManager() {
    stop();
}

bool GlobalHotkeyManager::checkAccessibility() {
    return m_right.state().isAvailable();
}

void GlobalHotkeyManager::promptForAccessibility() {
    m_right.prompt();
}

void GlobalHotkeyManager::openAccessibilitySettings() {
    m_right.openSettings();
}

void GlobalHotkeyManager::start() {
    if (!checkAccessibility()) {
        promptForAccessibility();
        return;
    }
    stop();
    m_eventTap = m_taps.create([this](const TapEvent &event) { handle(event); });
    if (!m_eventTap)
        return;
    m_thread.reset(QThread::create([tap = m_eventTap] {
        tap->setEnabled(true);
        tap->run();
    }));
    m_thread->setObjectName(QStringLiteral("Tolmi.GlobalHotkey"));
    m_thread->start(QThread::HighestPriority);
}

void GlobalHotkeyManager::stop() {
    if (m_eventTap) {
        m_eventTap->setEnabled(false);
        m_eventTap->invalidate();
    }
    // The tap's thread never waits for this one, so the wait is short; after it no event can arrive any more.
    if (m_thread)
        m_thread->wait();
    m_thread.reset();
    m_eventTap.reset();
    m_isHotkeyHeld = false;
}

void GlobalHotkeyManager::handle(const TapEvent &event) {
    switch (event.type) {
    case TapEventType::TapDisabledByTimeout:
    case TapEventType::TapDisabledByUserInput:
        m_eventTap->setEnabled(true);
        break;
    case TapEventType::FlagsChanged:
        handleFlagsChanged(event);
        break;
    case TapEventType::ChordBegan:
        if (m_isHotkeyHeld)
            notify(&HotkeyManager::onChord);
        break;
    case TapEventType::Other:
        break;
    }
}

void GlobalHotkeyManager::handleFlagsChanged(const TapEvent &event) {
    if (event.keyCode != targetKeyCode)
        return;
    const bool isOptionDown = event.flags & DictationKey::flag;
    if (isOptionDown == m_isHotkeyHeld)
        return;
    m_isHotkeyHeld = isOptionDown;
    notify(isOptionDown ? &HotkeyManager::onKeyDown : &HotkeyManager::onKeyUp);
}

void GlobalHotkeyManager::notify(Callback callback) {
    m_clock.post([weakSelf = weak_from_this(), callback] {
        if (const auto self = weakSelf.lock())
            self->report(callback);
    });
}

void GlobalHotkeyManager::report(Callback callback) const {
    // A stranger may sit at a locked desktop, and the text would go to whatever lies under the lock.
    const bool isRefused = callback == &HotkeyManager::onKeyDown && m_lock.isLocked();
    const std::function<void()> &call = this->*callback;
    if (call && !isRefused)
        call();
}
