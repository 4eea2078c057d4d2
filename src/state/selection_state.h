// What the selection of the next song goes by, besides the library and the settings. UI thread only.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace hullrider {

// The result of one selection.
struct SongChoice {
    int32_t playlist = 0;  // or the station index
    int32_t song = 0;      // 0 for a station
    int32_t extra = 0;     // the number drawn, for the uniform pick
    int32_t reserved = 0;  // always 0
};

// What the draw for a kind of music may come to. One more than the types of songs, and in another order.
enum Category : int32_t {
    kNoCategory = -1,
    kMidiCategory = 0,
    kMp3Category = 1,
    kTrackerCategory = 2,
    kFavoritesCategory = 3,  // favourites of any type
    kRadioCategory = 4,
};

// Beyond the types that a Song can have: what plays, or the history, is an internet station.
inline constexpr int32_t kInternetRadio = 3;

enum PlayMode : int32_t {
    kPlaylistMode = 0,  // songs of the current playlist only
    kLibraryMode = 1,   // the whole library, or a custom station; so are 2 and 3
    kStationMode = 4,   // the current internet station
};

enum FavoritesFilter : int32_t { kAllSongs = 0, kFavoritesOnly = 1, kNoFavorites = 2 };

// Songs to draw from, each with a weight. Not one entry for each time that a song may be drawn: the weights are added
// up instead, so that a favourite of any count takes one entry.
struct WeightedSongs {
    std::vector<SongChoice> songs;
    std::vector<int64_t> upTo;  // the sum of the weights of the songs up to and including this one
};

// What can be drawn from the whole library, kept because building it takes longer than many draws. `candidates.h` tells
// when it is out of date.
struct CandidateLists {
    std::array<WeightedSongs, 4> byCategory;  // MIDI to favourites
    std::array<int32_t, 4> songsOf{};         // songs of each, whatever the filter
    int64_t weightOfAll = 0;                  // of all songs but those that are never drawn
    const void* builtFrom = nullptr;          // where the library's playlists lay, how many they were
    uint64_t builtCount = 0;
    uint64_t builtRevision = 0;
    int32_t builtFilter = kAllSongs;
};

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

    bool firstPick = true;           // until something was picked
    bool excludeRadioOnce = false;   // the next draw has no radio in it
    bool savedRadioIsKnown = false;  // what the radio's weight goes back to then, as the first draw found it
    int32_t savedRadioWeight = 0;
    bool mixedMusic = true;          // false without music folders: only MIDI and radio are drawn
    int32_t selectionCalls = 0;      // within one selection
    int32_t lastCandidateCount = 0;  // how often songs could be drawn from the last list, as far as 32 bits go

    std::vector<SongChoice> failedNow;  // could not be loaded by the play-next under way, which tries others
    bool previousSongMode = false;      // the history is played again
    CandidateLists candidates;
};

}  // namespace hullrider
