// The library's records: what a scan finds and the cache keeps. A song is one playable file, a playlist is one folder
// ("album"). Songs are addressed by (playlist index, song index); whatever rebuilds the library invalidates the
// indices.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace hullrider {

// The type of a song, kept as a number in songs and in the cache file.
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
    int32_t favoriteCount = 0;  // 0: not a favorite; otherwise drawn favoriteCount + 1 times as often, below 0 never
    int32_t musicType = kMidi;  // kMidi, kMp3 or kTracker
};

struct Playlist {
    std::string albumName;  // UTF-8, the folder's own name
    std::vector<Song> songs;
    int32_t songCount = 0;   // as of the scan; not cached
    int32_t iRadioMode = 0;  // not 0: stands for internet radio instead of files
    int32_t favoriteCount = 0;
    int32_t isFavorite = 0;
    bool isQueue = false;  // see playback/queue.h; neither cached nor found by scans
};

struct MusicLibrary {
    std::vector<Playlist> playlists;

    // Raised by the recount, so that data derived from the library can tell that it is out of date.
    uint64_t revision = 0;

    // Raised by every scan, never lowered, and 0 after a load from the cache: not the size of the library.
    int32_t totalSongs = 0;
    int32_t playlistCount = 0;

    std::vector<std::string> missingFolders;  // unreadable in the last scan: music folders and albums

    // As of the last recount.
    int32_t numberOfPlaylists = 0;
    int32_t favoriteSongCount = 0;  // songs with a favoriteCount of 1 or more
    int32_t typedSongCount = 0;     // songs of all three types
    int32_t midiSongCount = 0;
    int32_t mp3SongCount = 0;
    int32_t trackerSongCount = 0;
    int32_t internetStationCount = 0;
};

// The selection's working weights, relative to each other. Loaded from the settings; a category with nothing to play is
// forced to 0 here, by the recount or by a draw, and keeps its configured weight in the settings.
struct SelectionWeights {
    int32_t favorites = 0;
    int32_t midi = 0;
    int32_t mp3 = 0;
    int32_t tracker = 0;
    int32_t radio = 0;

    bool operator==(const SelectionWeights&) const = default;
};

}  // namespace hullrider
