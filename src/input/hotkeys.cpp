#include "input/hotkeys.h"

#include <algorithm>
#include <array>

namespace hullrider {

namespace {

constexpr size_t kBuiltIn = 30;

constexpr uint32_t kAlt = 1, kCtrl = 2, kShift = 4, kNoRepeat = 0x4000;

constexpr std::array<std::string_view, kHotkeyActions> kLabels{
    "Next Song:",       "Previous Song:",       "Play\\Pause:",       "Stop\\Start Music:",   "Volume Toggle:",
    "Next Sound Font:", "Previous Sound Font:", "Favorite Count Up:", "Favorite Count Down:", "Quit:",
    "Volume Up:",       "Volume Down:",         "Music Home Button:", "Next Radio Station",   "Previous Radio Station:",
    "Key Bind 1:",      "Key Bind 2:",          "Key Bind 3:",        "Key Bind 4:",          "Joysitck Toggle:",
    "Button Rumble:",   "Toggle Rumble:"};

uint32_t ModifiersOf(const HotkeyBinding& binding, size_t action) {
    const bool repeats = action == kVolumeUpKey || action == kVolumeDownKey;
    return (binding.alt ? kAlt : 0) | (binding.ctrl ? kCtrl : 0) | (binding.shift ? kShift : 0) |
           (repeats ? 0 : kNoRepeat);
}

}  // namespace

HotkeyBindings BuiltInHotkeys() {
    return HotkeyBindings(kBuiltIn);
}

std::string_view HotkeyLabel(int32_t action) {
    return action >= 0 && action < kHotkeyActions ? kLabels[static_cast<size_t>(action)] : std::string_view();
}

std::vector<Hotkey> HotkeysToRegister(const HotkeyBindings& bindings) {
    std::vector<Hotkey> hotkeys;
    for (size_t i = 0; i < std::min<size_t>(bindings.size(), kActionsWithKeys); ++i) {
        // A binding without a key can never be pressed, but the system would register it.
        if (bindings[i].vkKey == 0) continue;
        hotkeys.push_back({static_cast<int32_t>(i), ModifiersOf(bindings[i], i), bindings[i].vkKey});
    }
    hotkeys.push_back({kShowPlayerKey, kCtrl | kShift, 'J'});
    hotkeys.push_back({kMediaNextKey, kNoRepeat, 0xB0});
    hotkeys.push_back({kMediaPreviousKey, kNoRepeat, 0xB1});
    hotkeys.push_back({kMediaStopKey, kNoRepeat, 0xB2});
    hotkeys.push_back({kMediaPlayPauseKey, kNoRepeat, 0xB3});
    return hotkeys;
}

}  // namespace hullrider
