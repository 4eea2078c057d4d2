// Radio stations: the user's internet stations, and the custom stations, which are mixes of local music.
#pragma once

#include <cstdint>
#include <string>
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
    bool isValid = true;     // false once a test found it unplayable
    bool isIncluded = true;  // takes part in the draw
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
    std::vector<DirectoryStation> recentStations;  // of the last searches
    std::vector<CustomStation> customStations;
    CustomStation activeCustomStation;
};

}  // namespace hullrider
