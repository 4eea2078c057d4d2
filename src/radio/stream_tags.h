// What a stream says of itself: the headers that its server sends with it, and the title blocks between its sound.
// Pure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "state/radio_state.h"

namespace hullrider {

// UTF-8, cut to these many bytes at a character boundary.
inline constexpr size_t kLongestStationName = 127, kLongestSongTitle = 127, kLongestDescription = 255,
                        kLongestGenre = 127;

// Tags as the audio library gives them.
struct StreamTags {
    const char* headers = nullptr;   // texts "name:value", each ended by a zero, an empty one at the end; may be null
    const char* metadata = nullptr;  // one text "StreamTitle='...';StreamUrl='...';"; may be null
    const char* comments = nullptr;  // of Ogg: texts "NAME=value", as the headers; may be null
};

// `stationTags` are those of the station in the directory. A title block comes before Ogg's comments.
StreamNowPlaying ReadStreamTags(const StreamTags& tags, const std::vector<std::string>& stationTags);

}  // namespace hullrider
