// Commands as lines of text, from the companion game's command file or from the console. UI thread.
#pragma once

#include <string_view>

#include "app/player.h"

namespace hullrider {

// Runs the line's command. Ignores an unknown command and one with invalid numbers.
void RunCommandLine(Player& player, std::string_view line);

// The same for the console, which also accepts "quit" and the menu's texts.
void RunConsoleLine(Player& player, std::string_view line);

// Runs the new lines of the command file, and rewrites "songInfo.txt" when the current item changes. Only in the
// companion edition, after start-up, while the library has music and no modal window is open.
void PollCommandFolder(Player& player);

}  // namespace hullrider
