// Parses the library cache. The format: a JSON object with the list "playlists"; each playlist an object with
// "albumName", "favoriteCount", "iRadioMode", "isFavorite" and the list "songs"; each song an object with
// "favoriteCount", "isFavorite", "musicType" (0 MIDI, 1 audio file, 2 tracker module), "playCount" and "songPath".
// Pure.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "state/music_library.h"

namespace hullrider {

struct CacheReading {
    std::vector<Playlist> playlists;  // empty unless isCache
    bool isCache = false;             // the whole text is JSON and holds a list of playlists
    std::string parseError;           // why the text is not JSON; empty when it is, but no cache
    size_t droppedSongs = 0;
};

// A missing number is 0 and a missing text is empty; a value of the wrong type counts as missing, and numbers are
// clamped to 32 bits. Other keys are ignored. An unknown musicType is derived from the extension. Songs that can never
// play are dropped: of no known type, or with a zero byte in the path. Takes no more memory than a few times the text's
// size.
CacheReading ReadMusicLibraryCache(std::string_view text);

}  // namespace hullrider
