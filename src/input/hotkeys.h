// Keys that work while another program has the focus: the table of bindings, and which of them are registered with the
// system. A binding's place in the table is its action, for keys and game controllers alike. UI thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hullrider {

enum HotkeyAction : int32_t {
    kNextSongKey,
    kPreviousSongKey,
    kPlayPauseKey,
    kStopStartKey,
    kVolumeToggleKey,
    kNextSoundFontKey,
    kPreviousSoundFontKey,
    kFavoriteUpKey,
    kFavoriteDownKey,
    kQuitKey,
    kVolumeUpKey,
    kVolumeDownKey,
    kMusicHomeKey,
    kNextStationKey,
    kPreviousStationKey,
    kKeyBind1Key,
    kKeyBind2Key,
    kKeyBind3Key,
    kKeyBind4Key,
    kJoystickToggleKey,
    kButtonRumbleKey,
    kToggleRumbleKey,
    kHotkeyActions,  // their number

    // Not in the table and not configurable.
    kShowPlayerKey = 199,
    kMediaNextKey,
    kMediaPreviousKey,
    kMediaStopKey,
    kMediaPlayPauseKey,
};

struct HotkeyBinding {
    int32_t vkKey = 0;  // virtual-key code; 0: no key
    bool ctrl = false;  // modifiers to hold
    bool alt = false;
    bool shift = false;
    int32_t gameControllerButton = -1;   // bound to the same action; -1: none
    int32_t gameControllerTrigger = -1;  // -1: none

    bool operator==(const HotkeyBinding&) const = default;
};

using HotkeyBindings = std::vector<HotkeyBinding>;  // by HotkeyAction; may be shorter or longer

// How many actions, from the first on, can have a key; the others only a game controller's button.
inline constexpr int32_t kActionsWithKeys = 16;

// Thirty, more than there are actions, all without a key.
HotkeyBindings BuiltInHotkeys();

// The action's label in the option window; empty when there is no such action.
std::string_view HotkeyLabel(int32_t action);

// What is registered with the system.
struct Hotkey {
    int32_t action = 0;      // also its identifier
    uint32_t modifiers = 0;  // the system's bits: 1 Alt, 2 Ctrl, 4 Shift, 0x4000 no auto-repeat
    int32_t vkKey = 0;
};

// A hotkey that the system refused, as a rule because another program uses the key.
struct RefusedHotkey {
    Hotkey hotkey;
    std::string reason;  // the system's text
};

// The bindings of the first sixteen actions that have a key, Ctrl+Shift+J to show the player, and the keyboard's media
// keys.
std::vector<Hotkey> HotkeysToRegister(const HotkeyBindings& bindings);

}  // namespace hullrider
