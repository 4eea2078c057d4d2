#include "input/hotkeys.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace hullrider {

TEST(Hotkeys, OnlyWhatHasAKeyIsRegisteredOfTheFirstSixteen) {
    HotkeyBindings bindings = BuiltInHotkeys();
    ASSERT_EQ(bindings.size(), 30U);
    const size_t always = HotkeysToRegister(bindings).size();
    EXPECT_EQ(always, 5U);  // to show the player, and four media keys

    bindings[kNextSongKey] = {0x74, true, true, true};
    bindings[kVolumeUpKey] = {0xBB, false, true, false};
    bindings[kKeyBind1Key].vkKey = 'K';
    bindings[kKeyBind2Key].vkKey = 'L';  // the seventeenth
    bindings[kQuitKey].ctrl = true;      // without a key
    const std::vector<Hotkey> hotkeys = HotkeysToRegister(bindings);
    ASSERT_EQ(hotkeys.size(), always + 3);
    EXPECT_EQ(hotkeys[0].action, kNextSongKey);
    EXPECT_EQ(hotkeys[0].modifiers, 0x4007U);
    EXPECT_EQ(hotkeys[0].vkKey, 0x74);
    EXPECT_EQ(hotkeys[1].modifiers, 1U);  // held, it goes on
    EXPECT_EQ(hotkeys[2].action, 15);
    EXPECT_EQ(hotkeys[3].action, 199);
    EXPECT_EQ(hotkeys[3].modifiers, 6U);
    EXPECT_EQ(hotkeys[3].vkKey, 74);

    EXPECT_EQ(HotkeysToRegister({}).size(), always);
    for (const int32_t none : {-1, 22, 199}) EXPECT_EQ(HotkeyLabel(none), "");
    EXPECT_EQ(HotkeysToRegister(HotkeyBindings(1000, {'A'})).size(), always + 16);
}

}  // namespace hullrider
