// What the selection of the next song goes by, besides the library and the settings. UI thread only.
#pragma once

#include <cstdint>
#include <optional>

namespace hullrider {

// What a weighted draw yields: songs of one type, favorites of any type, or internet radio. Distinct from an item's
// type (MusicType and the codes of play_item.h) and from its kind (PlayItem::Kind).
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
    kLibraryMode = 1,   // the whole library, or a custom station; 2 and 3 mean the same
    kStationMode = 4,   // the current internet station
};

enum FavoritesFilter : int32_t { kAllSongs = 0, kFavoritesOnly = 1, kNoFavorites = 2 };

struct SelectionState {
    int32_t playMode = kLibraryMode;
    bool shuffle = true;  // off: songs in order
    int32_t favoritesFilter = kAllSongs;

    int32_t currentPlaylist = 0;
    int32_t currentSongInPlaylist = -1;  // last song played in order; -1: before the first one
    int32_t currentCustomStation = 0;
    int32_t currentInternetStation = 0;
    bool radioPlaying = false;         // the current choice is an internet station
    bool customStationActive = false;  // the mix is that of the active custom station
    bool stationPreview = false;       // the current internet station is being tried out

    bool firstPick = true;                    // until the first pick
    bool excludeRadioOnce = false;            // the next draw leaves out radio
    std::optional<int32_t> savedRadioWeight;  // the radio's weight as of the first draw, restored after it was left out
    bool mixedMusic = true;                   // false without music folders: only MIDI and radio are drawn
    int32_t selectionCalls = 0;               // since the last draw of a category

    bool previousSongMode = false;      // the history is being replayed
    std::optional<int32_t> nextQueued;  // the queue's next song; past its end or nothing: no song is queued
};

}  // namespace hullrider
