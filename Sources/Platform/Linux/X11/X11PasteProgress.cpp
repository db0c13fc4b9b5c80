#include "Platform/Linux/X11/X11PasteProgress.h"

void X11PasteProgress::begin(bool offersPrimary) {
    std::lock_guard lock(m_mutex);
    m_offersPrimary = offersPrimary;
    m_target.reset();
    m_postedAt.reset();
}

void X11PasteProgress::post(Window target) {
    std::lock_guard lock(m_mutex);
    m_target = target;
    m_postedAt = std::chrono::steady_clock::now();
}

bool X11PasteProgress::offersPrimary() const {
    std::lock_guard lock(m_mutex);
    return m_offersPrimary;
}

std::optional<X11PasteProgress::Window> X11PasteProgress::target() const {
    std::lock_guard lock(m_mutex);
    return m_target;
}

std::optional<std::chrono::steady_clock::time_point> X11PasteProgress::postedAt() const {
    std::lock_guard lock(m_mutex);
    return m_postedAt;
}
