// The library cache, "musicLibraryCache.json": the whole library in one file, so that the player need not scan at every
// start. cache_reader.h describes the format. UI thread.
#pragma once

#include <string>
#include <vector>

#include "state/music_library.h"

namespace hullrider {

// Writes the library to `path` through "PATH.temp". Leaves out playlists of this run, and deliberately songs whose path
// is not plain ASCII: the next scan finds them again. An empty library writes nothing, so that a failed scan cannot
// wipe a good cache. Every outcome is one line on the output or the error stream; a failure leaves the old file. True
// when the file was written.
bool SaveMusicLibraryCache(const std::string& path, const MusicLibrary& library);

// For a user who has removed all music folders: their music must not come back at the next start.
void RemoveMusicLibraryCache(const std::string& path);

// The playlists in the file; none, with a line on the error stream, when it cannot be opened or read. A file that is
// not a cache is kept as "PATH.bad".
std::vector<Playlist> LoadMusicLibraryCache(const std::string& path);

}  // namespace hullrider
