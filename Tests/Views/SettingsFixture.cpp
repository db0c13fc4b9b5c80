#include "Views/SettingsFixture.h"

void SettingsFixture::start(bool isConfigured) {
    m_place.emplace(isConfigured);
    m_texts.emplace(m_place->store, PlatformTexts::forLinux());
}

void SettingsFixture::setCanCheckForUpdates(bool canCheck) {
    m_place->controller->setCanCheck(canCheck);
    m_place->clock.runPosted();
}
