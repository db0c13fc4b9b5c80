#include "TolmiApp/Settings/SettingsTable.h"

void SettingsTable::load() const {
    for (AbstractSetting *const setting : m_settings)
        setting->load();
}

void SettingsTable::writeBack() const {
    for (const AbstractSetting *const setting : m_settings) {
        if (setting->isWrittenBack())
            setting->store();
    }
}
