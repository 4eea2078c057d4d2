#include "input/hotkeys.h"

#include <gtest/gtest.h>

#include <array>

namespace hullrider {

TEST(Hotkeys, OnlyWhatHasAKeyIsRegisteredOfTheFirstSixteen) {
    HotkeyBindings bindings = BuiltInHotkeys();
    ASSERT_EQ(bindings.size(), 30U);
    bindings[kNextSongKey] = {0x74, true, true, true};
    bindings[kVolumeUpKey] = {0xBB, false, true, false};
    bindings[kVolumeDownKey] = {0xBD, false, false, true};
    bindings[kKeyBind1Key].vkKey = 'K';
    bindings[kKeyBind2Key].vkKey = 'L';  // the seventeenth
    bindings[kQuitKey].ctrl = true;      // without a key
    constexpr uint32_t kOnce = 0x4000;   // held, the volume's keys alone go on
    const std::vector<std::array<uint32_t, 3>> expected = {
        {kNextSongKey, kOnce | 7, 0x74},  {kVolumeUpKey, 1, 0xBB},      {kVolumeDownKey, 4, 0xBD},
        {kKeyBind1Key, kOnce, 'K'},       {kShowPlayerKey, 6, 'J'},     {kMediaNextKey, kOnce, 0xB0},
        {kMediaPreviousKey, kOnce, 0xB1}, {kMediaStopKey, kOnce, 0xB2}, {kMediaPlayPauseKey, kOnce, 0xB3}};
    std::vector<std::array<uint32_t, 3>> registered;
    for (const Hotkey& hotkey : HotkeysToRegister(bindings)) {
        registered.push_back(
            {static_cast<uint32_t>(hotkey.action), hotkey.modifiers, static_cast<uint32_t>(hotkey.vkKey)});
    }
    EXPECT_EQ(registered, expected);

    const size_t always = 5;
    EXPECT_EQ(HotkeysToRegister({}).size(), always);
    for (const int32_t none : {-1, 22, 199}) EXPECT_EQ(HotkeyLabel(none), "");
    EXPECT_EQ(HotkeysToRegister(HotkeyBindings(1000, {'A'})).size(), always + 16);
}

}  // namespace hullrider
