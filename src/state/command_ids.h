// What the player can be told to do, by number: what a menu's WM_COMMAND carries and a key of the panel gives.
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

    // Of the panel, with a value from 0 to 1.
    kSetVolumeCommand = 200,
    kSeekCommand,  // the value is the place in the song
};

}  // namespace hullrider
