// What keys and controller buttons are called. Pure; any thread.
#pragma once

#include <cstdint>
#include <string>

#include "input/hotkeys.h"

namespace hullrider {

// The name of a virtual-key code as it stands on a US keyboard; "Key 0x5D" for one without a name of its own.
std::string KeyName(int32_t vkKey);

// "Ctrl+Shift+F5"; empty for a binding without a key.
std::string KeyText(const HotkeyBinding& binding);

// True for Ctrl, Alt, Shift and the Windows keys, the left ones and the right ones: no key to bind, but held with one.
bool IsModifierKey(int32_t vkKey);

// True for a key that types, edits or moves in most programs when neither Ctrl nor Alt is held.
bool IsTypingKey(int32_t vkKey);

inline constexpr int32_t kControllerButtons = 15;
inline constexpr int32_t kControllerTriggers = 2;

// By SDL's numbers of a game controller's buttons, laid out as on an Xbox one; "Button 31" for those beyond.
std::string ControllerButtonName(int32_t button);

// 0: the left one, 1: the right one.
std::string ControllerTriggerName(int32_t trigger);

}  // namespace hullrider
