#pragma once

#include "Platform/EventTap.h"

#include <QByteArray>

class InjectedKeys;

/// Event taps that watch the raw keys of an X server, whatever has the focus and whoever grabs the keyboard.
/// They hold no key back.
class X11EventTapFactory final : public EventTapFactory {
public:
    /// `injectedKeys` is what the program posts itself. An empty name stands for the
    /// display of the environment.
    explicit X11EventTapFactory(std::shared_ptr<InjectedKeys> injectedKeys, QByteArray displayName = {});

    std::shared_ptr<EventTap> create(std::function<void(const TapEvent &)> handler) override;

private:
    std::shared_ptr<InjectedKeys> m_injectedKeys;
    QByteArray m_displayName;
};
