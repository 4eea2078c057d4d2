// The library cache's text: whatever it says, only songs come out that may stand in a library.
#include <cstdint>
#include <cstdlib>

#include "library/cache_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(data, data + size);
    const hullrider::CacheReading reading = hullrider::ReadMusicLibraryCache(text);
    if (!reading.isCache && !reading.playlists.empty()) std::abort();
    for (const hullrider::Playlist& playlist : reading.playlists) {
        for (const hullrider::Song& song : playlist.songs) {
            if (song.musicType < hullrider::kMidi || song.musicType > hullrider::kTracker) std::abort();
            if (song.songPath.find('\0') != std::string::npos) std::abort();
        }
    }
    return 0;
}
