#include "Platform/Linux/Clipboard/PasteProgress.h"

void PasteProgress::begin(bool offersPrimary) {
    std::lock_guard lock(m_mutex);
    m_offersPrimary = offersPrimary;
    m_target.reset();
    m_postedAt.reset();
}

void PasteProgress::post(Target target) {
    std::lock_guard lock(m_mutex);
    m_target = target;
    m_postedAt = std::chrono::steady_clock::now();
}

bool PasteProgress::offersPrimary() const {
    std::lock_guard lock(m_mutex);
    return m_offersPrimary;
}

std::optional<PasteProgress::Target> PasteProgress::target() const {
    std::lock_guard lock(m_mutex);
    return m_target;
}

std::optional<std::chrono::steady_clock::time_point> PasteProgress::postedAt() const {
    std::lock_guard lock(m_mutex);
    return m_postedAt;
}
