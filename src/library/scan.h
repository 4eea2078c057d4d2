// Turns music directories into playlists. A music directory is a container of album folders: every folder directly
// inside it becomes one playlist with the songs that lie directly in that folder. Nothing deeper is looked at, so that
// no loop of links can trap a scan.
//
// Callable from any thread, with a library that no other thread knows. No scan throws but for want of memory: what
// cannot be read is one line on the error stream, and the rest is scanned.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "state/music_library.h"

namespace hullrider {

// Receives the full path of every favorites file ("favorite.json", in any case) that a scan meets.
using FavoritesFound = std::function<void(const std::string& path)>;

// How far a scan has come, and whether it is still wanted; for other threads too.
struct ScanProgress {
    std::atomic<int32_t> songsFound{0};
    std::atomic<bool> isUnwanted{false};  // ends the scan early, with what it has
};

// One playlist, of this run only, with the songs among the files and those in the folders and in the folders directly
// inside them, in the order given. It bears the folder's name when there is just one. What is no music is passed over.
Playlist GatherSongs(const std::vector<std::string>& paths);

// The playlists of one music directory, folders and songs in the order in which the system lists them. Raises
// `library`'s totalSongs and playlistCount, notes there what of the directory is missing or cannot be read, and
// touches nothing else of it. Folders without songs give no playlist.
std::vector<Playlist> ScanDirectory(const std::string& path, MusicLibrary& library,
                                    const FavoritesFound& favoritesFound = {}, ScanProgress* progress = nullptr);

// Replaces the playlists with those of the directories, in their order. Indices of songs and playlists that anyone kept
// are void after it, and the caller recounts.
void ScanMusicFolders(MusicLibrary& library, const std::vector<std::string>& directoryPaths,
                      const FavoritesFound& favoritesFound, ScanProgress* progress = nullptr);

}  // namespace hullrider
