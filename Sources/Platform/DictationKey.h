#pragma once

#include "Platform/EventTap.h"

/// The key that is held to dictate, the right Option (Alt) key, as event taps report it.
namespace DictationKey {
inline constexpr qint64 keyCode = 61;
/// The bit of the flags that is set while the key or its left sister is down.
inline constexpr quint64 flag = 0x80000;

/// The key went down, or came up while the left one stayed down.
inline constexpr TapEvent pressed { TapEventType::FlagsChanged, keyCode, flag };
/// The key came up, and the left one is up too.
inline constexpr TapEvent released { TapEventType::FlagsChanged, keyCode, 0 };
/// Another key joined the press.
inline constexpr TapEvent joined { TapEventType::ChordBegan, keyCode, flag };
} // namespace DictationKey
