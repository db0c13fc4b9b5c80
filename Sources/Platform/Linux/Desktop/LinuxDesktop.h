#pragma once

#include "Platform/Linux/Desktop/DesktopMethods.h"

/// The desktop of this session.
namespace LinuxDesktop {
/// What the compositor and the X server of the environment say, asked once. Takes at most a second then, and
/// a few milliseconds where both answer.
const DesktopFacts &facts();
} // namespace LinuxDesktop
