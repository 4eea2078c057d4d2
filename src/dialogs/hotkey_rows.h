// What the hotkey window says about each action's bindings, and what a key press there means. Pure; UI thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "input/hotkeys.h"

namespace hullrider {

// The binding of an action, by key and by controller; one without either when the table is too short.
HotkeyBinding BindingOf(const HotkeyBindings& bindings, int32_t action);

// The same to be changed: the table grows where it is too short.
HotkeyBinding& BindingToChange(HotkeyBindings& bindings, int32_t action);

// What stands in the action's key field while it does not wait for a key.
std::string KeyFieldText(const HotkeyBindings& bindings, int32_t action);

// What is to be said beside the field: that the key is another one's too, or not to be had, or not a wise choice.
// Empty when all is well.
std::string KeyRemark(const HotkeyBindings& bindings, const std::vector<RefusedHotkey>& refused, int32_t action);

// The same for the button and the trigger of a game controller.
std::string ControllerRemark(const HotkeyBindings& bindings, int32_t action);

// A key that arrives at a field that waits for one; `pressed` says what is held with it. False: it goes on waiting, as
// only what is held with others, or no key at all, has come. Escape leaves the binding as it was, Delete and Backspace
// clear its key, any other key becomes its key.
bool TakePressedKey(HotkeyBinding& binding, const HotkeyBinding& pressed);

// True when every action has the same binding in both.
bool HaveSameBindings(const HotkeyBindings& one, const HotkeyBindings& other);

// No action has a key, or none a button or trigger, any more.
void ClearKeys(HotkeyBindings& bindings);
void ClearControllers(HotkeyBindings& bindings);

}  // namespace hullrider
