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
    std::string path;        // of the song, or the station's URL
    int64_t startedAt = 0;   // seconds since 1970
    double playedSec = 0.0;  // heard, without pauses
    std::string title;       // as it was shown; empty in histories of before
};

// What tells one item from another in the test for repeats.
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
    size_t cursor = 0;  // the record that plays; the number of records when none of them does

    // The number of the last pick of each record that could be drawn again, counted from 1 over all picks.
    std::unordered_map<HistoryKey, uint64_t, HistoryKeyHash> lastPick;
    uint64_t picks = 0;
};

}  // namespace hullrider
