#include "app/player_hotkeys_win.h"

#include "input/hotkeys_win.h"
#include "platform/console.h"

namespace hullrider {

namespace {

HWND MainWindowOf(const Player& player) {
    return static_cast<HWND>(player.state.shell.mainWindow);
}

}  // namespace

void TakeHotkeys(Player& player) {
    ReleaseHotkeys(player);
    player.refusedHotkeys = RegisterHotkeys(MainWindowOf(player), player.hotkeys);
    for (const RefusedHotkey& refused : player.refusedHotkeys) {
        const std::string_view label = HotkeyLabel(refused.hotkey.action);
        PrintErrorLine("The hotkey " + std::to_string(refused.hotkey.action) +
                       (label.empty() ? "" : " (" + std::string(label) + ")") + " is not available: " + refused.reason);
    }
}

void ReleaseHotkeys(const Player& player) {
    UnregisterAllHotkeys(MainWindowOf(player));
}

}  // namespace hullrider
