// The names of keys and controller buttons. Pure; any thread.
#pragma once

#include <cstdint>
#include <string>

#include "input/hotkeys.h"

namespace hullrider {

// The name of a virtual-key code as on a US keyboard; "Key 0x5D" for one without a name.
std::string KeyName(int32_t vkKey);

// "Ctrl+Shift+F5"; empty for a binding without a key.
std::string KeyText(const HotkeyBinding& binding);

// True for Ctrl, Alt, Shift and the Windows keys, left and right: they cannot be bound, only held with another key.
bool IsModifierKey(int32_t vkKey);

// True for a key that types, edits or moves in most programs when neither Ctrl nor Alt is held.
bool IsTypingKey(int32_t vkKey);

inline constexpr int32_t kControllerButtons = 15;
inline constexpr int32_t kControllerTriggers = 2;

// By SDL's button numbers, with Xbox names; "Button 31" for those beyond.
std::string ControllerButtonName(int32_t button);

// 0: left, 1: right.
std::string ControllerTriggerName(int32_t trigger);

}  // namespace hullrider
