// Comparing a library with the result of a scan, and keeping what a scan cannot know. Folders are compared without
// regard to the case of ASCII letters. Pure; any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "state/music_library.h"

namespace hullrider {

enum class Compared { kAllSongs, kCachedSongs };  // the cache keeps only songs with plain ASCII paths

// Whether the same albums hold the same songs in the same order, whatever their marks and counts. Playlists of this run
// and those without songs do not count.
bool IsSameMusic(const std::vector<Playlist>& a, const std::vector<Playlist>& b, Compared what);

// The path is plain ASCII.
bool IsCachedPath(const std::string& songPath);

// True when an album lies in that folder or is that folder.
bool HasMusicOf(const std::vector<Playlist>& playlists, std::string_view folder);

// True when some album lies in none of the folders.
bool HasMusicElsewhere(const std::vector<Playlist>& playlists, const std::vector<std::string>& folders);

// Removes the albums that lie in none of the folders.
void DropMusicElsewhere(std::vector<Playlist>& playlists, const std::vector<std::string>& folders);

// Adds to `found` the albums of `before` whose folder, or a folder above it, could not be read, and sorts all by the
// order of the music folders.
void KeepMissingMusic(MusicLibrary& found, const std::vector<Playlist>& before,
                      const std::vector<std::string>& folders);

// Copies the albums' own marks from before.
void KeepAlbumMarks(std::vector<Playlist>& found, const std::vector<Playlist>& before);

}  // namespace hullrider
