// The statistics, "Sonorant_Stats.json": a JSON object with "midi", "mp3", "tracker", "stations", "chapters" and
// "favorites", each an object with "count" and "seconds", and the numbers "starts" and "skips", over all runs. UI
// thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "state/statistics.h"

namespace hullrider {

// Counts a start of the program, or a skip, for this run and for all time.
void CountStart(Statistics& statistics);
void CountSkip(Statistics& statistics);
// Counts an item of that type (PlayItem::type) as played, and the seconds of it that were heard.
void CountPlayed(Statistics& statistics, int32_t type, bool isFavorite);
void CountHeard(Statistics& statistics, int32_t type, bool isFavorite, double seconds);

// Adds the file's numbers to those of all time. A file that is not understood is kept as "PATH.bad". False when there
// is nothing to take.
bool LoadStatistics(const std::string& path, Statistics& statistics);
bool SaveStatistics(const std::string& path, const Statistics& statistics);

// The same on the file's text. Pure.
bool ReadStatistics(std::string_view text, StatisticsCounts& counts, std::string& error);
std::string StatisticsText(const StatisticsCounts& counts);

}  // namespace hullrider
