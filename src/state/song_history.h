// What was played, oldest first. UI thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>

namespace hullrider {

struct HistoryRecord {
    int32_t type = 0;        // of the song, or kInternetRadio
    int32_t playlist = -1;   // or the station index; -1: not in the library of this run
    int32_t song = -1;       // 0 for a station
    std::string path;        // of the song, or the station's URL
    int64_t startedAt = 0;   // seconds since 1970
    double playedSec = 0.0;  // heard, without pauses
};

struct SongHistory {
    std::deque<HistoryRecord> records;
    size_t cursor = 0;  // the record that plays; the number of records when none of them does

    // The number of the last pick of each record that could be drawn again, counted from 1 over all picks.
    std::unordered_map<uint64_t, uint64_t> lastPick;
    uint64_t picks = 0;
};

}  // namespace hullrider
