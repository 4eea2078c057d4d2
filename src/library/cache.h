// The library cache, "musicLibraryCache.json": the whole library in one file, so that the player need not scan at every
// start. cache_reader.h tells what is in it. UI thread.
#pragma once

#include <string>
#include <vector>

#include "state/music_library.h"

namespace hullrider {

// Writes the library to `path` through "PATH.temp". Playlists of this run only are left out, and on purpose songs whose
// path is not plain ASCII: they come back with the next scan. An empty library writes nothing, so that a failed scan
// cannot wipe a good cache. Every outcome is one line on the output or the error stream; a failure leaves the old file.
// True when the file was written.
bool SaveMusicLibraryCache(const std::string& path, const MusicLibrary& library);

// For a user who has no music folders any more: what was in them must not come back with the next start.
void RemoveMusicLibraryCache(const std::string& path);

// The playlists in the file; none when it cannot be opened or read, which one line on the error stream tells. A file
// that is there and is no cache is kept as "PATH.bad".
std::vector<Playlist> LoadMusicLibraryCache(const std::string& path);

}  // namespace hullrider
