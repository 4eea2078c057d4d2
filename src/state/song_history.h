// What was played, oldest first. UI thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>

namespace hullrider {

struct HistoryRecord {
    int32_t type = 0;        // of the item
    int32_t playlist = -1;   // or the station index; -1: not in the library of this run
    int32_t song = -1;       // 0 for a station
    std::string path;        // or the station's URL
    int64_t startedAt = 0;   // seconds since 1970
    double playedSec = 0.0;  // excluding pauses
    std::string title;       // as shown; empty in older files
};

// Identifies an item in the test for repeats.
struct HistoryKey {
    int32_t type = 0;
    int32_t playlist = 0;
    int32_t song = 0;

    bool operator==(const HistoryKey&) const = default;
};

struct HistoryKeyHash {
    size_t operator()(const HistoryKey& key) const {
        const uint64_t place = uint64_t{static_cast<uint32_t>(key.playlist)} << 32 | static_cast<uint32_t>(key.song);
        return std::hash<uint64_t>{}((place ^ static_cast<uint32_t>(key.type)) * 0x9E3779B97F4A7C15U);
    }
};

struct SongHistory {
    std::deque<HistoryRecord> records;
    size_t cursor = 0;  // the current record; the number of records when there is none

    // Each record's last pick, numbered from 1 over all picks, if it could be drawn again.
    std::unordered_map<HistoryKey, uint64_t, HistoryKeyHash> lastPick;
    uint64_t picks = 0;
};

}  // namespace hullrider
