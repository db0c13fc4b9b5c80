#include "Platform/Linux/Clipboard/PasteRestore.h"

#include "Platform/Linux/Clipboard/PasteProgress.h"

#include <algorithm>

namespace {
using std::chrono::steady_clock;

/// How long the former content waits for a program that has not read the text, and for the rest of what one
/// reads that has begun.
constexpr std::chrono::seconds longestWaitForReading { 10 };
constexpr std::chrono::milliseconds readingTime { 300 };
/// The former content is asked for a second after the command; a little later it comes unasked, for which the
/// thread looks now and then.
constexpr std::chrono::milliseconds unaskedTime { 1250 };
constexpr std::chrono::milliseconds betweenLooks { 100 };
} // namespace

PasteRestore::PasteRestore(std::shared_ptr<const PasteProgress> progress)
    : m_progress(std::move(progress)) { }

void PasteRestore::begin(const std::vector<PasteboardItem> &displaced) {
    // A text that displaces one which is being pasted leaves that one's place to what was there before both.
    if (!m_isPasting || m_pending)
        m_displaced = ClipboardContent(displaced);
    m_pending.reset();
    m_isPasting = true;
    m_isRead = false;
    m_isRestored = false;
}

void PasteRestore::end() {
    m_pending.reset();
    m_isPasting = false;
    m_displaced = {};
}

void PasteRestore::noteRead() {
    if (!m_isPasting)
        return;
    m_isRead = true;
    if (m_pending)
        m_pending->at = std::min(m_pending->at, steady_clock::now() + readingTime);
}

void PasteRestore::restore(const std::vector<PasteboardItem> &items, bool ownsText) {
    if (!std::exchange(m_isRestored, false))
        schedule(ClipboardContent(items), ownsText);
}

void PasteRestore::schedule(ClipboardContent content, bool ownsText) {
    const bool awaitsReading = m_isPasting && ownsText && !m_isRead && m_progress->target().value_or(0) != 0;
    const Instant now = steady_clock::now();
    m_pending
        = Pending { std::move(content), awaitsReading ? now + longestWaitForReading : now, awaitsReading };
}

bool PasteRestore::isOverdue() const {
    const auto postedAt = m_progress->postedAt();
    return m_isPasting && !m_pending && postedAt && steady_clock::now() >= *postedAt + unaskedTime;
}

std::optional<PasteRestore::Instant> PasteRestore::nextDue() const {
    if (m_pending)
        return m_pending->at;
    return m_isPasting ? std::optional(steady_clock::now() + betweenLooks) : std::nullopt;
}

std::optional<ClipboardContent> PasteRestore::takeDue(bool ownsText) {
    if (isOverdue()) {
        m_isRestored = true;
        schedule(m_displaced, ownsText);
    }
    // Nothing is displaced any more by a text that another program has displaced.
    if (m_pending && m_pending->awaitsReading && !ownsText)
        end();
    if (!m_pending || steady_clock::now() < m_pending->at)
        return {};
    ClipboardContent content = std::move(m_pending->content);
    end();
    return content;
}
