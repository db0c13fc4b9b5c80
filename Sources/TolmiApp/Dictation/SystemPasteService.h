#pragma once

#include "Platform/Pasteboard.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"

#include <memory>

class Clock;
class FrontmostApplication;
class PasteKeystroke;

/// Puts a text, without what an application might obey, into the application that has the focus, by way of
/// the clipboard, and brings the former content of the clipboard back a second later, whatever was copied in
/// between.
///
/// Main thread only. Held by a std::shared_ptr, which the delayed restore shares. The platform's parts
/// outlive it.
class SystemPasteService final : public PasteService,
                                 public std::enable_shared_from_this<SystemPasteService> {
public:
    SystemPasteService(
        Pasteboard &pasteboard, PasteKeystroke &keystroke, FrontmostApplication &frontmost, Clock &clock);

    PasteTargetCapture paste(const QString &text, AppLanguage language) override;

private:
    struct Target {
        PasteTargetCapture capture;
        bool isTerminal = false;
    };

    Target captureTarget(AppLanguage language);
    void blockForClipboard();
    void restorePasteboard(const std::vector<PasteboardItem> &items);

    Pasteboard &m_pasteboard;
    PasteKeystroke &m_keystroke;
    FrontmostApplication &m_frontmost;
    Clock &m_clock;
};
