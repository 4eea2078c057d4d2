// Radio stations: the user's internet stations, and the custom stations, which are mixes of local music.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "state/music_library.h"

namespace hullrider {

struct InternetStation {
    std::string name;
    std::string url;  // of the stream, or of a ".pls" or ".m3u" file that names it
    std::string country;
    std::string state;
    std::vector<std::string> tags;
    int32_t favorite = 0;
    int32_t favoriteCount = 0;  // drawn favoriteCount + 1 times as often; below 0: never
    int32_t clickCount = 0;
    int32_t votes = 0;
    bool isValid = true;      // false once a test found it unplayable
    bool isIncluded = true;   // takes part in the draw
    std::string oldUrl = {};  // before the last repair of `url`; empty: never repaired
};

inline constexpr const char* kUnknownStation = "Unknown Station";
inline constexpr const char* kUnknownSong = "Unknown Song";

// What the playing stream says of itself. UTF-8, cut to the lengths of radio/stream_tags.h.
struct StreamNowPlaying {
    std::string stationName;  // kUnknownStation where the stream does not say
    std::string songTitle;    // kUnknownSong where it does not say
    std::string stationDescription;
    std::string stationGenre;  // the directory's tags for the station, where it has any, else what the stream says

    bool operator==(const StreamNowPlaying&) const = default;
};

// A title that a station has played.
struct HeardTitle {
    int64_t heardAt = 0;  // seconds since 1970
    std::string title;
};

// A station as the public directory knows it.
struct DirectoryStation {
    std::string name;
    std::string url;
    std::string country;
    std::string state;
    int32_t votes = 0;
    int32_t clickCount = 0;
    std::vector<std::string> tags;
};

// A user-defined mix: draws from the whole library by its own weights.
struct CustomStation {
    std::string name;
    SelectionWeights weights;
};

struct RadioState {
    std::vector<InternetStation> stations;
    uint64_t revision = 0;        // changes with every change of `stations`
    StreamNowPlaying nowPlaying;  // of the station that plays, or played last
    // The last titles of each station, by URL, the newest at the end. Of this run.
    std::unordered_map<std::string, std::vector<HeardTitle>> heardTitles;
    std::vector<DirectoryStation> recentStations;  // of the last searches
    std::vector<CustomStation> customStations;
    CustomStation activeCustomStation;
};

}  // namespace hullrider
