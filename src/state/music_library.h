// The library's records: what a scan finds and the cache keeps. A song is one playable file, a playlist is one folder
// ("album"). Songs are addressed by (playlist index, song index); whatever rebuilds the library invalidates the
// indices.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace hullrider {

// Kind of a song, kept as a number in songs and in the cache file.
enum MusicType : int32_t {
    kUnsupported = -1,
    kMidi = 0,
    kMp3 = 1,  // any compressed or PCM audio file
    kTracker = 2,
};

struct Song {
    std::string songPath;       // UTF-8, full path; identifies the song
    int32_t isFavorite = 0;     // 1 when marked as a favorite
    int32_t playCount = 0;      // times played
    int32_t favoriteCount = 0;  // favorite weight; 0: not a favorite
    int32_t musicType = kMidi;  // a MusicType from 0 to 2
};

struct Playlist {
    std::string albumName;  // UTF-8, the folder's own name
    std::vector<Song> songs;
    int32_t songCount = 0;   // songs when the scan built the playlist; not cached
    int32_t iRadioMode = 0;  // not 0: stands for internet radio instead of files
    int32_t favoriteCount = 0;
    int32_t isFavorite = 0;
    bool isOfThisRun = false;  // dropped on the window: neither cached nor found by a scan
};

struct MusicLibrary {
    std::vector<Playlist> playlists;

    // Raised by the recount, so that what was made from the library can tell that it is out of date.
    uint64_t revision = 0;

    // Raised by every scan and never lowered, so 0 after a load from the cache: not the size of the library.
    int32_t totalSongs = 0;
    int32_t playlistCount = 0;

    std::vector<std::string> missingFolders;  // music folders and albums that the last scan of this run could not read

    // As of the last recount.
    int32_t numberOfPlaylists = 0;
    int32_t favoriteSongCount = 0;  // songs with a favoriteCount of 1 or more
    int32_t typedSongCount = 0;     // songs of type 0 to 2
    int32_t midiSongCount = 0;
    int32_t mp3SongCount = 0;
    int32_t trackerSongCount = 0;
    int32_t internetStationCount = 0;
};

// The selection's working weights, relative to each other. Loaded from the settings; a kind with nothing to play is
// forced to 0 here, by the recount or by a draw, and keeps its configured weight there.
struct SelectionWeights {
    int32_t favorites = 0;
    int32_t midi = 0;
    int32_t mp3 = 0;
    int32_t tracker = 0;
    int32_t radio = 0;

    bool operator==(const SelectionWeights&) const = default;
};

}  // namespace hullrider
