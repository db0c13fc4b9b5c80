#include "Views/StudioWindowFixture.h"

StudioWindowFixture::StudioWindowFixture()
    : m_model(m_settings.store, m_router,
        { .workspaces = workspaces(),
            .onboarding = counting(),
            .hasStatusItem = [this] { return m_hasTray; },
            .quit = [this] { ++m_quits; } }) {
    m_settings.store.setUiLanguage(AppLanguage::English);
}

StudioWorkspaces StudioWindowFixture::workspaces() {
    StudioWorkspaces all;
    for (const StudioDestination destination : allCases<StudioDestination>()) {
        if (destination != StudioDestination::Health)
            all[destination] = counting();
    }
    return all;
}

StudioModelFactory StudioWindowFixture::counting() {
    return [this](TolmiStudioWindowModel &) {
        auto made = std::make_unique<QObject>();
        ++m_liveModels;
        QObject::connect(made.get(), &QObject::destroyed, this, [this] { --m_liveModels; });
        return made;
    };
}
