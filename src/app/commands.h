// The player's commands. One table serves the menu, the hotkeys, the panel, the command file and the console. UI
// thread.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "app/player.h"
#include "state/command_ids.h"

namespace hullrider {

struct Command {
    int32_t id = 0;
    std::string_view text;           // as in the menu
    void (*run)(Player&) = nullptr;  // null: opens an option window
};

std::span<const Command> Commands();
const Command* FindCommand(int32_t id);  // null when there is none

// False for an unknown command, for one that needs a window which this front lacks, before start-up is over and after
// shutdown.
bool RunCommand(Player& player, int32_t id);

// The menu bar: pop-ups with their commands, in order.
struct MenuPopup {
    std::string_view text;
    std::span<const int32_t> commands;
};
std::span<const MenuPopup> MainMenu();

// The command of a HotkeyAction; 0 for none.
int32_t CommandOfHotkey(int32_t action);

}  // namespace hullrider
