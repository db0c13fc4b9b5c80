#pragma once

#include "Platform/EventTap.h"

/// The key that is held to dictate, the right Option (Alt) key, as event taps report it.
namespace DictationKey {
inline constexpr qint64 keyCode = 61;
/// The flag that is set while the right or the left Option key is down.
inline constexpr quint64 flag = 0x80000;

/// The key was pressed, or released while the left one is down.
inline constexpr TapEvent pressed { TapEventType::FlagsChanged, keyCode, flag };
/// The key was released, and the left one is up.
inline constexpr TapEvent released { TapEventType::FlagsChanged, keyCode, 0 };
/// Another key was pressed during the press.
inline constexpr TapEvent joined { TapEventType::ChordBegan, keyCode, flag };
} // namespace DictationKey
