// What the selection of the next song goes by, besides the library and the settings. UI thread only.
#pragma once

#include <cstdint>
#include <optional>

namespace hullrider {

// What the draw for a kind of music may come to. One more than the types of songs, and in another order.
enum Category : int32_t {
    kNoCategory = -1,
    kMidiCategory = 0,
    kMp3Category = 1,
    kTrackerCategory = 2,
    kFavoritesCategory = 3,  // favorites of any type
    kRadioCategory = 4,
};

enum PlayMode : int32_t {
    kPlaylistMode = 0,  // songs of the current playlist only
    kLibraryMode = 1,   // the whole library, or a custom station; so are 2 and 3
    kStationMode = 4,   // the current internet station
};

enum FavoritesFilter : int32_t { kAllSongs = 0, kFavoritesOnly = 1, kNoFavorites = 2 };

struct SelectionState {
    int32_t playMode = kLibraryMode;
    bool shuffle = true;  // off: one song after the other
    int32_t favoritesFilter = kAllSongs;

    int32_t currentPlaylist = 0;
    int32_t currentSongInPlaylist = -1;  // where the walk without shuffle stands; -1: before the first song
    int32_t currentCustomStation = 0;
    int32_t currentInternetStation = 0;
    bool radioPlaying = false;         // the current choice is an internet station
    bool customStationActive = false;  // the mix is that of the active custom station
    bool stationPreview = false;       // the current internet station is tried out

    bool firstPick = true;                    // until something was picked
    bool excludeRadioOnce = false;            // the next draw has no radio in it
    std::optional<int32_t> savedRadioWeight;  // what the radio's weight goes back to then, as the first draw found it
    bool mixedMusic = true;                   // false without music folders: only MIDI and radio are drawn
    int32_t selectionCalls = 0;               // since the last draw of a category

    bool previousSongMode = false;  // the history is played again
};

}  // namespace hullrider
