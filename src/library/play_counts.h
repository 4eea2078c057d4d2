// How often each song was played, "MusicLibraryPlayCount.json": a JSON object with the object "playCounts", which holds
// a number for each song's path. Counts survive rescans and the absence of their songs. UI thread.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/state_files.h"
#include "state/music_library.h"
#include "state/statistics.h"

namespace hullrider {

// Raises the song's count, in the library and in the store, up to the largest number.
void CountPlay(Song& song, PlayCounts& counts);

// Brings the library's counts and the store into step by the songs' paths: the higher count wins.
void MergePlayCounts(MusicLibrary& library, PlayCounts& counts);

// Adds the file's counts to the store; the higher of two counts for one song wins. A file that is not a store is kept
// as "PATH.bad". False when there is nothing to take.
bool LoadPlayCounts(const std::string& path, PlayCounts& counts);
bool SavePlayCounts(const std::string& path, const PlayCounts& counts);

// The same on the file's text. Pure. Counts before an error are good.
StateReading ReadPlayCounts(std::string_view text, PlayCounts& counts, std::string& error);

// The store as a list, which is quick to make, and the file's text.
using PlayCountList = std::vector<std::pair<std::string, int32_t>>;
PlayCountList ListOf(const PlayCounts& counts);
std::string PlayCountsText(PlayCountList counts);

}  // namespace hullrider
