// Commands given as lines of text: in the command file of the companion game, or at the console. UI thread.
#pragma once

#include <string_view>

#include "app/player.h"

namespace hullrider {

// Does what the line says. A line that is no command, or whose numbers make no sense, changes nothing.
void RunCommandLine(Player& player, std::string_view line);

// The same at the console, where "quit" and the texts of the menu do too.
void RunConsoleLine(Player& player, std::string_view line);

// Takes the next lines of the command file, and keeps "songInfo.txt" true to what plays. In the companion edition, once
// start-up is over, while there is music and no window waits for an answer.
void PollCommandFolder(Player& player);

}  // namespace hullrider
