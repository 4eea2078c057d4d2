// One thing to play, as a value. It is made where the pick is made, and read by everything that opens, positions,
// counts or shows it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace hullrider {

// A place in a list, as the selection returns it.
struct SongChoice {
    int32_t playlist = 0;  // or the station index; -1: not in the list of this run
    int32_t song = 0;      // 0 for a station
    int32_t extra = 0;     // the number drawn, for the uniform pick
    int32_t reserved = 0;  // unused, always 0
};

// Type codes besides MusicType.
inline constexpr int32_t kInternetRadio = 3;
inline constexpr int32_t kChapter = 4;  // of an audiobook
inline constexpr size_t kItemTypes = 5;

struct PlayItem {
    enum class Kind { kNone, kSong, kStation };

    Kind kind = Kind::kNone;
    int32_t type = 0;  // a song's MusicType, or one of the codes above
    SongChoice place;
    std::string address;     // path or URL, UTF-8; identifies it
    std::string title;       // UTF-8
    std::string secondLine;  // the album; empty for a station
    bool hasLength = true;
    bool canBePositioned = true;
};

}  // namespace hullrider
