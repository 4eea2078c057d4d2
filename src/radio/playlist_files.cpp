#include "radio/playlist_files.h"

#include <algorithm>
#include <array>

namespace hullrider {

namespace {

// The lines, each as it stands before its "\n". An end of file after a "\n" begins no further line.
template <typename Take>
void ForEachLine(std::string_view text, const Take& take) {
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        take(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

}  // namespace

PlaylistFile PlaylistFileOf(std::string_view url) {
    if (url.find(".pls") != std::string_view::npos) return PlaylistFile::kPls;
    if (url.find(".m3u") != std::string_view::npos) return PlaylistFile::kM3u;
    return PlaylistFile::kNone;
}

std::vector<std::string> ParseM3u(std::string_view text) {
    std::vector<std::string> entries;
    ForEachLine(text, [&](std::string_view line) {
        if (!line.starts_with('#')) entries.emplace_back(line);
    });
    return entries;
}

std::vector<std::string> ParsePls(std::string_view text) {
    std::vector<std::string> entries;
    ForEachLine(text, [&](std::string_view line) {
        const size_t equals = line.find('=');
        if (line.starts_with("File") && equals != std::string_view::npos) entries.emplace_back(line.substr(equals + 1));
    });
    return entries;
}

bool IsUnsupportedStreamUrl(std::string_view url) {
    constexpr std::array<std::string_view, 5> kEndings{".m3u8", ".mp4", ".mkv", ".flv", ".avi"};
    return std::any_of(kEndings.begin(), kEndings.end(),
                       [url](std::string_view ending) { return url.ends_with(ending); });
}

}  // namespace hullrider
