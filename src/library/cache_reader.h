// What the library cache's text says. The format: a JSON object with the list "playlists"; each playlist an object with
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
    bool isCache = false;             // the text is JSON to its end and holds a list of playlists
    std::string parseError;           // why it is not; empty when the text is JSON of another kind
    size_t droppedSongs = 0;
};

// A missing number is 0 and a missing text is empty; a value of the wrong type counts as missing, and numbers are cut
// to 32 bits. What else the objects hold is passed over. A musicType that is none is found again from the path's
// extension. Songs that could never be played are dropped: of no known type, or with a zero byte in the path.
// Takes no memory beyond a few times the text's, whatever it says.
CacheReading ReadMusicLibraryCache(std::string_view text);

}  // namespace hullrider
