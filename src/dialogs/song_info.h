// What the statistics window shows. Pure except for the local time; UI thread.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "dialogs/playing_info.h"
#include "state/app_state.h"

namespace hullrider {

using TextRow = std::vector<std::string>;  // one text for each column

struct SongInfo {
    PlayingInfo playing;         // by the caller, from the channel
    std::vector<TextRow> kinds;  // by kKindColumns
    // Of all time heard, 0 to 1: MIDI, audio files, tracker modules, stations.
    std::array<double, 4> timeShare{};
    std::string library;
    std::string thisRun;
    std::string allTime;
    std::vector<TextRow> mostPlayed;  // by kMostPlayedColumns, the most played first
    std::vector<TextRow> recent;      // by kRecentColumns, the latest first
    int64_t plays = -1;               // of all songs, when `mostPlayed` was made
};

inline constexpr std::array kKindColumns{"Kind", "In library", "This run", "Hours", "All time", "Hours"};
inline constexpr std::array kMostPlayedColumns{"Most played", "Album", "Plays"};
inline constexpr std::array kRecentColumns{"Time", "Recently heard", "Album"};

// Everything as of `now`, in seconds since 1970. `statistics` replaces those of `app`.
SongInfo MakeSongInfo(const AppState& app, const Statistics& statistics, int64_t now);

// Updates it. Searches the counts of all songs only if one was played since.
void UpdateSongInfo(SongInfo& info, const AppState& app, const Statistics& statistics, int64_t now);

// All of it as lines of text, for the clipboard.
std::string SongInfoText(const SongInfo& info);

// "1,234:05": hours and minutes, rounded down.
std::string HoursText(double seconds);

// The local time of day, with the date before it when it is not the day of `now`. Empty for 0, an unknown time.
std::string WhenText(int64_t seconds, int64_t now);

}  // namespace hullrider
