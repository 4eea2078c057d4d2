// How often each song was played, "MusicLibraryPlayCount.json": a JSON object with the object "playCounts", which holds
// a number for each song's path. It outlives rescans, and songs that are not in the library for now. UI thread.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/state_files.h"
#include "state/music_library.h"
#include "state/statistics.h"

namespace hullrider {

// Raises the song's count, in the library and in the store. A count at its limit stays there.
void CountPlay(Song& song, PlayCounts& counts);

// Brings a library that was loaded or scanned and the store into step by the songs' paths: the higher count holds.
void MergePlayCounts(MusicLibrary& library, PlayCounts& counts);

// Adds the file's counts to the store; of two for one song the higher one holds. A file that is none is kept as
// "PATH.bad". False when there is nothing to take.
bool LoadPlayCounts(const std::string& path, PlayCounts& counts);
bool SavePlayCounts(const std::string& path, const PlayCounts& counts);

// The same on the file's text. Pure. Counts before an error in it are good.
StateReading ReadPlayCounts(std::string_view text, PlayCounts& counts, std::string& error);

// The store as a list, which is quick to make, and the file's text.
using PlayCountList = std::vector<std::pair<std::string, int32_t>>;
PlayCountList ListOf(const PlayCounts& counts);
std::string PlayCountsText(PlayCountList counts);

}  // namespace hullrider
