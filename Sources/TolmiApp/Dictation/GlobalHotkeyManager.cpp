#include "TolmiApp/Dictation/GlobalHotkeyManager.h"

#include "Foundation/Clock.h"
#include "Platform/DictationKey.h"
#include "Platform/SessionLock.h"

#include <QThread>

namespace {
constexpr qint64 targetKeyCode = DictationKey::keyCode;
const DictationKeySources::Source theKey = QStringLiteral("key");
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
    // Behind what the tap has queued, and before anything of the next one.
    if (m_isHotkeyHeld.exchange(false))
        queue(&GlobalHotkeyManager::forgetKey);
}

GlobalHotkeyManager::Press GlobalHotkeyManager::press(const DictationKeySources::Source &source) {
    if (m_lock.isLocked())
        return Press::Locked;
    if (!m_sources.press(source))
        return holder() == source ? Press::Repeated : Press::HeldElsewhere;
    report(&HotkeyManager::onKeyDown);
    return Press::Counts;
}

void GlobalHotkeyManager::release(const DictationKeySources::Source &source) {
    if (m_sources.release(source))
        report(&HotkeyManager::onKeyUp);
}

void GlobalHotkeyManager::forgetOtherPress() {
    if (holder() && holder() != theKey)
        m_sources.release(*holder());
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
            queue(&GlobalHotkeyManager::reportChord);
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
    queue(isOptionDown ? &GlobalHotkeyManager::reportKeyDown : &GlobalHotkeyManager::reportKeyUp);
}

void GlobalHotkeyManager::queue(void (GlobalHotkeyManager::*report)()) {
    m_clock.post([weakSelf = weak_from_this(), report] {
        if (const auto self = weakSelf.lock())
            ((*self).*report)();
    });
}

void GlobalHotkeyManager::reportKeyDown() {
    // A stranger may sit at a locked desktop, and the text would go to whatever lies under the lock.
    if (m_sources.press(theKey) && !m_lock.isLocked())
        report(&HotkeyManager::onKeyDown);
}

void GlobalHotkeyManager::reportKeyUp() {
    release(theKey);
}

void GlobalHotkeyManager::reportChord() {
    // A letter typed with the key during the press of another source ends nothing.
    if (holder() == theKey)
        report(&HotkeyManager::onChord);
}

void GlobalHotkeyManager::forgetKey() {
    m_sources.release(theKey);
}

void GlobalHotkeyManager::report(Callback callback) const {
    const std::function<void()> &call = this->*callback;
    if (call)
        call();
}
