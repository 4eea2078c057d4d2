#include "input/hotkeys_win.h"

#include <gtest/gtest.h>

namespace hullrider {
namespace {

// A key that some window has registered is refused to every other one.
bool IsFree(UINT modifiers, int32_t key) {
    constexpr int kProbe = 1000;
    const bool isFree = RegisterHotKey(nullptr, kProbe, modifiers, static_cast<UINT>(key)) != 0;
    if (isFree) UnregisterHotKey(nullptr, kProbe);
    return isFree;
}

TEST(SystemHotkeys, AtTheEndTheFirstFifteenAreLetGoAndTheOthersGoWithTheWindow) {
    HotkeyBindings bindings = BuiltInHotkeys();
    for (int32_t i = 0; i < 20; ++i) bindings[static_cast<size_t>(i)] = {'A' + i, true, true, true};
    const HWND window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(window, nullptr);
    const std::vector<Hotkey> hotkeys = HotkeysToRegister(bindings);
    ASSERT_TRUE(RegisterHotkeys(window, bindings).empty());
    for (const Hotkey& hotkey : hotkeys) EXPECT_FALSE(IsFree(hotkey.modifiers, hotkey.vkKey)) << hotkey.action;

    UnregisterHotkeys(window);
    for (const Hotkey& hotkey : hotkeys) {
        const bool staysUntilTheWindowGoes = hotkey.action >= 15;
        EXPECT_EQ(IsFree(hotkey.modifiers, hotkey.vkKey), !staysUntilTheWindowGoes) << hotkey.action;
    }
    DestroyWindow(window);
    for (const Hotkey& hotkey : hotkeys) EXPECT_TRUE(IsFree(hotkey.modifiers, hotkey.vkKey)) << hotkey.action;
}

}  // namespace
}  // namespace hullrider
