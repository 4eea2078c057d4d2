// Turns music directories into playlists. A music directory contains album folders: every folder directly inside it
// becomes one playlist with the songs that lie directly in that folder. Nothing deeper is read, so that no loop of
// links can trap a scan.
//
// Callable from any thread, on a library that no other thread uses. Throws only when memory is short: what cannot be
// read is one line on the error stream, and the rest is scanned.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "state/music_library.h"

namespace hullrider {

// Receives the full path of every favorites file ("favorite.json", in any case) that a scan finds.
using FavoritesFound = std::function<void(const std::string& path)>;

// How far a scan has come, and whether it is still wanted. Shared with other threads.
struct ScanProgress {
    std::atomic<int32_t> songsFound{0};
    std::atomic<bool> isUnwanted{false};  // ends the scan early, with what it has found
};

// A playlist for the queue: the songs among the files, in the folders and in the folders directly inside them, in the
// order given. It is named after the folder when there is just one. Other files are skipped.
Playlist GatherSongs(const std::vector<std::string>& paths);

// The playlists of one music directory; folders and songs in the system's order. Of `library`, only totalSongs,
// playlistCount and missingFolders change. Folders without songs give no playlist.
std::vector<Playlist> ScanDirectory(const std::string& path, MusicLibrary& library,
                                    const FavoritesFound& favoritesFound = {}, ScanProgress* progress = nullptr);

// Replaces the playlists by those of the directories, in their order. All indices of songs and playlists are invalid
// afterwards, and the caller recounts.
void ScanMusicFolders(MusicLibrary& library, const std::vector<std::string>& directoryPaths,
                      const FavoritesFound& favoritesFound, ScanProgress* progress = nullptr);

}  // namespace hullrider
