// The user's favorites: a list, beside the marks in the songs. UI thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace hullrider {

struct FavoriteEntry {
    int32_t songType = 0;  // a MusicType
    // Its place in the library; -1: not in the library of this run.
    int32_t songIndex = -1;
    int32_t plistIndex = -1;
    int32_t favoriteCount = 1;  // 1 or more; below 0: the song is never drawn
    std::string songPath;       // UTF-8, full path of any length; identifies the entry, in any case of its letters
};

struct FavoritesState {
    std::vector<FavoriteEntry> list;                 // in the order they were added
    std::unordered_map<std::string, size_t> byPath;  // list index by path in lower case
    uint64_t revision = 0;                           // raised by every change of the list
};

}  // namespace hullrider
