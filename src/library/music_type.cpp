#include "library/music_type.h"

#include <algorithm>
#include <array>
#include <utility>

namespace hullrider {

MusicType GetMusicType(std::string_view extension) {
    static constexpr std::array<std::pair<std::string_view, MusicType>, 10> kTypes{{
        {".midi", kMidi},
        {".mid", kMidi},
        {".mp3", kMp3},
        {".m4a", kMp3},
        {".flac", kMp3},
        {".mod", kTracker},
        {".xm", kTracker},
        {".s3m", kTracker},
        {".it", kTracker},
        {".mtm", kTracker},
    }};
    const auto* const found =
        std::find_if(kTypes.begin(), kTypes.end(), [&](const auto& entry) { return entry.first == extension; });
    return found == kTypes.end() ? kUnsupported : found->second;
}

MusicType MusicTypeOf(std::string_view path) {
    const size_t separator = path.find_last_of("/\\");
    const std::string_view name = separator == std::string_view::npos ? path : path.substr(separator + 1);
    const size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) return kUnsupported;
    return GetMusicType(ToLower(name.substr(dot)));
}

std::string ToLower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

}  // namespace hullrider
