#include "dialogs/hotkey_rows.h"

#include <gtest/gtest.h>

#include <utility>

namespace hullrider {
namespace {

constexpr int32_t kF5 = 0x74;

TEST(HotkeyRows, RemarksSayWhyAKeyIsNoGoodChoice) {
    struct Case {
        HotkeyBinding key;
        const char* remark;
    };
    // Of Next Song, while Quit is Ctrl+F5.
    const Case table[] = {{{}, ""},
                          {{kF5, true, true, false}, ""},
                          {{kF5, false, false, false}, ""},
                          {{kF5, true, false, false}, "Also Quit"},
                          {{'J', true, false, true}, "No longer shows the player"},
                          {{'J', true, true, true}, ""},
                          {{'J', true}, ""},  // and not Shift
                          {{0xB0}, "No longer a media key"},
                          {{0xB0, true}, ""},
                          {{'A'}, "Will no longer reach other programs"},
                          {{'A', false, false, true}, "Will no longer reach other programs"},
                          {{'A', false, true, false}, ""},
                          {{0x6F}, "Will no longer reach other programs"}};
    for (const auto& [key, remark] : table) {
        HotkeyBindings bindings = BuiltInHotkeys();
        bindings[kNextSongKey] = key;
        bindings[kQuitKey] = {kF5, true};
        EXPECT_EQ(KeyRemark(bindings, {}, kNextSongKey), remark) << KeyFieldText(bindings, kNextSongKey);
        // Where there is nothing worse to say, what the system said counts, but only of a key that there is.
        const std::string refused = KeyRemark(bindings, {{{kNextSongKey, 0, kF5}, ""}}, kNextSongKey);
        const bool isFine = *remark == '\0' || std::string(remark).starts_with("Will");
        EXPECT_EQ(refused, isFine && key.vkKey != 0 ? "Taken by another program" : remark);
    }
}

// Actions beyond the system's keys are for controllers only: a key that a file gives them is nobody's.
TEST(HotkeyRows, AKeyOfAnActionForControllersIsNoConflict) {
    HotkeyBindings bindings = BuiltInHotkeys();
    bindings[kKeyBind1Key] = bindings[kKeyBind2Key] = {kF5, true};
    EXPECT_EQ(KeyRemark(bindings, {}, kKeyBind1Key), "");
    bindings[kNextSongKey] = {kF5, true};
    EXPECT_EQ(KeyRemark(bindings, {}, kNextSongKey), "Also Key Bind 1");
}

TEST(HotkeyRows, OneButtonOrTriggerForTwoActionsIsRemarkedUpon) {
    HotkeyBindings bindings = BuiltInHotkeys();
    bindings[kNextSongKey].gameControllerButton = bindings[kToggleRumbleKey].gameControllerButton = 0;
    bindings[kQuitKey].gameControllerTrigger = bindings[kNextStationKey].gameControllerTrigger = 1;
    EXPECT_EQ(ControllerRemark(bindings, kNextSongKey), "Also Toggle Rumble");
    EXPECT_EQ(ControllerRemark(bindings, kNextStationKey), "Also Quit");
    EXPECT_EQ(ControllerRemark(bindings, kPlayPauseKey), "");
}

TEST(HotkeyRows, AFieldThatWaitsTakesLeavesOrClears) {
    const HotkeyBinding before{kF5, true, false, false, 3, 1};
    struct Case {
        HotkeyBinding pressed;
        bool isOver;
        HotkeyBinding after;
    };
    const Case table[] = {{{0x11, true}, false, before},  // Ctrl, held for what is to follow
                          {{0x5B}, false, before},
                          {{0xE5}, false, before},  // no keys
                          {{0xE7, true}, false, before},
                          {{0xFF}, false, before},
                          {{0x1B}, true, before},
                          {{0x1B, false, false, true}, true, {0x1B, false, false, true, 3, 1}},
                          {{0x2E}, true, {0, false, false, false, 3, 1}},
                          {{0x08}, true, {0, false, false, false, 3, 1}},
                          {{0x2E, true}, true, {0x2E, true, false, false, 3, 1}},
                          {{'K', true, true, true}, true, {'K', true, true, true, 3, 1}}};
    for (const auto& [pressed, isOver, after] : table) {
        HotkeyBinding binding = before;
        EXPECT_EQ(TakePressedKey(binding, pressed), isOver) << pressed.vkKey;
        EXPECT_EQ(binding, after) << pressed.vkKey;
    }
}

TEST(HotkeyRows, AnyChangeOfAnyActionIsToBeSaved) {
    const HotkeyBindings saved = BuiltInHotkeys();
    EXPECT_TRUE(HaveSameBindings(saved, saved));
    for (int32_t action = 0; action < kHotkeyActions; ++action) {
        HotkeyBindings changed = saved;
        ++BindingToChange(changed, action).gameControllerButton;
        EXPECT_FALSE(HaveSameBindings(saved, changed)) << action;
    }
    EXPECT_TRUE(HaveSameBindings({}, HotkeyBindings(3))) << "a file may leave out what is not bound";
}

// A file may hold fewer bindings than there are actions.
TEST(HotkeyRows, AShortTableGrowsWhereItIsChanged) {
    HotkeyBindings bindings(2, {kF5, true, false, false, 4, -1});
    EXPECT_EQ(KeyFieldText(bindings, kToggleRumbleKey), "None");
    EXPECT_EQ(bindings.size(), 2U);
    BindingToChange(bindings, kQuitKey).vkKey = 'Q';
    EXPECT_EQ(bindings.size(), static_cast<size_t>(kQuitKey) + 1);
    EXPECT_EQ(bindings[kQuitKey].gameControllerButton, -1);

    ClearKeys(bindings);
    EXPECT_EQ(bindings[1], (HotkeyBinding{0, false, false, false, 4, -1}));
    ClearControllers(bindings);
    EXPECT_EQ(bindings[1], HotkeyBinding());
}

}  // namespace
}  // namespace hullrider
