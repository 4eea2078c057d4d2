// Playlist files, which name streams, and addresses that are known not to be streams. Pure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hullrider {

enum class PlaylistFile { kNone, kPls, kM3u };

// The kind of playlist file that a URL names: ".pls" or else ".m3u" anywhere in it, in lower case.
PlaylistFile PlaylistFileOf(std::string_view url);

// The lines that are not comments, as they stand: a carriage return stays. Empty lines count: callers take the first
// entry only.
std::vector<std::string> ParseM3u(std::string_view text);

// The values of the keys that begin with "File", in their order.
std::vector<std::string> ParsePls(std::string_view text);

// HLS playlists and video files: the URL ends in ".m3u8", ".mp4", ".mkv", ".flv" or ".avi".
bool IsUnsupportedStreamUrl(std::string_view url);

}  // namespace hullrider
