// How much was played. UI thread only.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>

#include "state/play_item.h"

namespace hullrider {

// Items of one type: how many were played, and how long they were heard.
struct Played {
    int64_t count = 0;
    double seconds = 0.0;

    bool operator==(const Played&) const = default;
};

struct StatisticsCounts {
    std::array<Played, kItemTypes> byType;
    Played favorites;    // the favorites among the songs
    int64_t starts = 0;  // of the program
    int64_t skips = 0;   // items that the user cut short

    bool operator==(const StatisticsCounts&) const = default;
};

struct Statistics {
    StatisticsCounts thisRun;
    StatisticsCounts allTime;  // this run included
};

// How often each song was played, by path. Songs that have left the library keep their counts.
struct PlayCounts {
    std::unordered_map<std::string, int32_t> byPath;
    uint64_t revision = 0;  // raised by every change
};

}  // namespace hullrider
