// Comparing a library with what a scan has found, and keeping what a scan cannot know. Folders are compared by their
// ASCII letters in any case. Pure; any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "state/music_library.h"

namespace hullrider {

enum class Compared { kAllSongs, kCachedSongs };  // the cache keeps songs with plain ASCII paths only

// Whether the same albums hold the same songs in the same order, whatever their marks and counts. Playlists of this run
// only, and without songs, do not count.
bool IsSameMusic(const std::vector<Playlist>& a, const std::vector<Playlist>& b, Compared what);

// The path has nothing but ASCII letters and signs.
bool IsCachedPath(const std::string& songPath);

// True when an album lies in that folder, or is that folder.
bool HasMusicOf(const std::vector<Playlist>& playlists, std::string_view folder);

// True when some album lies in none of the folders.
bool HasMusicElsewhere(const std::vector<Playlist>& playlists, const std::vector<std::string>& folders);

// Takes out the albums that lie in none of the folders.
void DropMusicElsewhere(std::vector<Playlist>& playlists, const std::vector<std::string>& folders);

// Adds to what was found the albums of `before` whose folder could not be read, or lies in one that could not, and
// brings all into the order of the music folders.
void KeepMissingMusic(MusicLibrary& found, const std::vector<Playlist>& before,
                      const std::vector<std::string>& folders);

// Albums that were there before keep their own marks.
void KeepAlbumMarks(std::vector<Playlist>& found, const std::vector<Playlist>& before);

}  // namespace hullrider
