// What the hotkey window shows of each action's bindings, and what a key press there means. Pure; UI thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "input/hotkeys.h"

namespace hullrider {

// The binding of an action, by key and by controller; one without either when the table is too short.
HotkeyBinding BindingOf(const HotkeyBindings& bindings, int32_t action);

// The same, to be changed: a table that is too short grows.
HotkeyBinding& BindingToChange(HotkeyBindings& bindings, int32_t action);

// The text of the action's key field while it does not wait for a key.
std::string KeyFieldText(const HotkeyBindings& bindings, int32_t action);

// The remark beside the key field of an action below kActionsWithKeys: the key is also another action's, is taken, or
// is a poor choice. Empty when all is well.
std::string KeyRemark(const HotkeyBindings& bindings, const std::vector<RefusedHotkey>& refused, int32_t action);

// The same for the button and the trigger of a game controller.
std::string ControllerRemark(const HotkeyBindings& bindings, int32_t action);

// Handles a key that is pressed in a waiting field; `pressed` includes the modifiers. False for a modifier alone or a
// code that is no key: the field goes on waiting. Escape keeps the binding, Delete and Backspace clear its key, any
// other key becomes its key.
bool TakePressedKey(HotkeyBinding& binding, const HotkeyBinding& pressed);

// True when every action has the same binding in both.
bool HaveSameBindings(const HotkeyBindings& one, const HotkeyBindings& other);

// Removes the keys, or the buttons and triggers, of all actions.
void ClearKeys(HotkeyBindings& bindings);
void ClearControllers(HotkeyBindings& bindings);

}  // namespace hullrider
