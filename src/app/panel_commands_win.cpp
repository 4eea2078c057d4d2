#include "app/panel_commands_win.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "app/commands.h"
#include "playback/seek.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

// A command, or something with the element's value.
struct PanelCommand {
    PanelElement element;
    int32_t command = 0;
    void (*run)(Player& player, double value) = nullptr;
};

// Posted, so that the panel is done with the click when the window goes.
void PostExit(Player& player, double) {
    PostMessageW(static_cast<HWND>(player.state.shell.mainWindow), WM_COMMAND, kExitCommand, 0);
}

void ChangeVolume(Player& player, double value) {
    SetVolumeLevel(player.state, static_cast<float>(value));
}

void Seek(Player& player, double value) {
    SeekTo(player.state.playback, value * player.state.playback.songLengthSec);
}

constexpr std::array kPanelCommands{
    PanelCommand{PanelElement::kPrevious, kPreviousSongCommand},
    PanelCommand{PanelElement::kPlayPause, kPlayPauseCommand},
    PanelCommand{PanelElement::kNext, kNextSongCommand},
    PanelCommand{PanelElement::kPlaylistBack, kPreviousPlaylistCommand},
    PanelCommand{PanelElement::kPlaylistForward, kNextPlaylistCommand},
    PanelCommand{PanelElement::kShuffle, kShuffleCommand},
    PanelCommand{PanelElement::kFilter, kFavoritesFilterCommand},
    PanelCommand{PanelElement::kFavoriteDown, kFavoriteDownCommand},
    PanelCommand{PanelElement::kFavoriteUp, kFavoriteUpCommand},
    PanelCommand{PanelElement::kExit, 0, PostExit},
    PanelCommand{PanelElement::kVolume, 0, ChangeVolume},
    PanelCommand{PanelElement::kSongBar, 0, Seek},
};

}  // namespace

ElementSet EnabledElements() {
    ElementSet enabled;
    for (const PanelCommand& command : kPanelCommands) enabled.set(IndexOf(command.element));
    return enabled;
}

void RunPanelAction(Player& player, const PanelAction& action) {
    const auto isMeant = [&](const PanelCommand& command) { return command.element == action.element; };
    const auto* const command = std::find_if(kPanelCommands.begin(), kPanelCommands.end(), isMeant);
    if (command == kPanelCommands.end()) return;
    if (command->run != nullptr) {
        command->run(player, action.value);
    } else {
        RunCommand(player, command->command);
    }
}

}  // namespace hullrider
