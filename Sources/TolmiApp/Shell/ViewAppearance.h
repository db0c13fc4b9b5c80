#pragma once

#include "Platform/DesktopLook.h"

class QQmlEngine;
class SettingsStore;

/// Keeps the colours and the motion of everything that one engine shows in step with the chosen look and,
/// where that is the system's, with the desktop's. A desktop without a preference is a light one.
class ViewAppearance final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(bool isMotionReduced READ isMotionReduced NOTIFY changed)

public:
    /// Lives as long as the engine does; `settings` and `look` outlive it.
    ViewAppearance(QQmlEngine &engine, const SettingsStore &settings, const DesktopLook &look);

    bool isDark() const;
    bool isMotionReduced() const { return m_look.isMotionReduced(); }

Q_SIGNALS:
    void changed();

private:
    void link(QQmlEngine &engine);

    const SettingsStore &m_settings;
    const DesktopLook &m_look;
};
