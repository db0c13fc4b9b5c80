#include "TolmiApp/Dictation/SystemPasteService.h"

#include "Foundation/Clock.h"
#include "Platform/FrontmostApplication.h"
#include "Platform/PasteKeystroke.h"
#include "Text/Text.h"
#include "TolmiApp/Dictation/PastableText.h"
#include "TolmiApp/Texts/L10n.h"

namespace {
/// The time that the system gets to see the new content.
constexpr double clipboardSeconds = 0.05;
/// How long a modifier key that the user still holds may delay the command in all, and how often it is looked
/// at. It is a count of looks, because the clock may be set meanwhile.
constexpr double modifierStepSeconds = 0.01;
constexpr int mostModifierSteps = 25;
constexpr double restoreSeconds = 1.0;
} // namespace

SystemPasteService::SystemPasteService(
    Pasteboard &pasteboard, PasteKeystroke &keystroke, FrontmostApplication &frontmost, Clock &clock)
    : m_pasteboard(pasteboard)
    , m_keystroke(keystroke)
    , m_frontmost(frontmost)
    , m_clock(clock) { }

PasteTargetCapture SystemPasteService::paste(const QString &text, AppLanguage language) {
    const Target target = captureTarget(language);
    std::vector<PasteboardItem> saved = m_pasteboard.items();
    m_pasteboard.setDictatedText(pastableText(text, target.isTerminal));
    blockForClipboard();
    m_keystroke.post();
    m_clock.callAfter(restoreSeconds,
        [self = shared_from_this(), saved = std::move(saved)] { self->restorePasteboard(saved); });
    return target.capture;
}

SystemPasteService::Target SystemPasteService::captureTarget(AppLanguage language) {
    Target target;
    PasteTargetCapture &capture = target.capture;
    capture.timestamp = m_clock.now();
    capture.appName = L10n::text(L10n::Key::unknownTarget, language);
    const std::optional<FrontApplication> front = m_frontmost.current();
    if (!front)
        return target;
    target.isTerminal = front->isTerminal;
    const QString name = Text::trimmed(front->localizedName.value_or(QString()));
    if (!name.isEmpty())
        capture.appName = name;
    capture.bundleID = front->bundleIdentifier;
    return target;
}

void SystemPasteService::blockForClipboard() {
    m_clock.block(clipboardSeconds);
    for (int step = 0; step < mostModifierSteps && m_keystroke.isModifierHeld(); ++step)
        m_clock.block(modifierStepSeconds);
}

void SystemPasteService::restorePasteboard(const std::vector<PasteboardItem> &items) {
    // What was empty before keeps the dictated text, so that it can be pasted again.
    if (!items.empty())
        m_pasteboard.setItems(items);
}
