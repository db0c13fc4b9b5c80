#pragma once

#include "Platform/AccessibilityRight.h"

#include <QByteArray>

#include <functional>

/// The right to watch and post keys on an X server, which every program has whose server can do it.
class X11AccessibilityRight final : public AccessibilityRight {
public:
    /// `tellHow` is handed the reason when the user asks for a right that is missing. An empty name stands
    /// for the display of the environment.
    explicit X11AccessibilityRight(std::function<void(const QString &)> tellHow, QByteArray displayName = {});

    Availability state() override;
    void prompt() override;
    /// Does nothing: an X server has no place where the right is granted.
    void openSettings() override { }

private:
    std::function<void(const QString &)> m_tellHow;
    QByteArray m_displayName;
};
