// The player's commands by number, as a menu's WM_COMMAND or a key of the panel sends them.
#pragma once

#include <cstdint>

namespace hullrider {

enum CommandId : int32_t {
    kExitCommand = 3,
    kPlayPauseCommand,
    kStartCommand,
    kStopCommand,
    kNextSongCommand,
    kPreviousSongCommand,
    kRadioOptionsCommand,
    kFavoriteOptionsCommand,
    kHotkeyOptionsCommand,
    kSongInfoCommand,
    kNextSoundFontCommand,
    kPreviousSoundFontCommand,
    kVisualOptionsCommand,
    kFoldersCommand,
    kMergeFavoritesCommand = 18,
    kAboutCommand,
    kNextPlaylistCommand,
    kPreviousPlaylistCommand,
    kStationsCommand,
    kPlayGameCommand,
    kUpdateCommand,
    kSyncLibraryCommand,
    kEqualizerCommand,
    kCustomStationCommand,

    // Not in the menu.
    kStopStartCommand = 100,
    kVolumeToggleCommand,
    kVolumeUpCommand,
    kVolumeDownCommand,
    kFavoriteUpCommand,
    kFavoriteDownCommand,
    kMusicHomeCommand,
    kNextStationCommand,
    kPreviousStationCommand,
    kShuffleCommand,
    kFavoritesFilterCommand,
    kShowPlayerCommand,
    kButtonRumbleCommand,
    kToggleRumbleCommand,
    kMuteCommand,

    // From the panel, with a value from 0 to 1.
    kSetVolumeCommand = 200,
    kSeekCommand,  // to that fraction of the song
};

}  // namespace hullrider
