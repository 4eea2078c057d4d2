#include "library/play_counts.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "library/state_json.h"

namespace hullrider {

bool ReadPlayCounts(std::string_view text, PlayCounts& counts, std::string& error) {
    const nlohmann::json object = ParseObject(text, error);
    if (object.is_null()) return false;
    const auto found = object.find("playCounts");
    if (found == object.end() || !found->is_object()) {
        error = "it holds no play counts";
        return false;
    }
    for (const auto& item : found->items()) {
        const int64_t read = CountOf(item.value());
        if (read < 1) continue;
        int32_t& count = counts.byPath[item.key()];
        count = std::max(count, static_cast<int32_t>(std::min<int64_t>(read, INT32_MAX)));
    }
    return true;
}

std::string PlayCountsText(const PlayCounts& counts) {
    std::vector<const std::pair<const std::string, int32_t>*> sorted;
    for (const auto& entry : counts.byPath) sorted.push_back(&entry);
    std::sort(sorted.begin(), sorted.end(), [](const auto* a, const auto* b) { return a->first < b->first; });
    std::string text = "{\"playCounts\":{";
    const char* separator = "\n";
    for (const auto* entry : sorted) {
        text += separator;
        text += nlohmann::json(entry->first).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
        text += ':' + std::to_string(entry->second);
        separator = ",\n";
    }
    return text + "\n}}\n";
}

void CountPlay(Song& song, PlayCounts& counts) {
    if (song.playCount < INT32_MAX) ++song.playCount;
    int32_t& count = counts.byPath[song.songPath];
    count = song.playCount = std::max(count, song.playCount);
}

void MergePlayCounts(MusicLibrary& library, PlayCounts& counts) {
    for (Playlist& playlist : library.playlists) {
        for (Song& song : playlist.songs) {
            const auto kept = counts.byPath.find(song.songPath);
            song.playCount = std::max({song.playCount, kept == counts.byPath.end() ? 0 : kept->second, 0});
            if (song.playCount > 0) counts.byPath[song.songPath] = song.playCount;
        }
    }
}

bool LoadPlayCounts(const std::string& path, PlayCounts& counts) {
    return LoadStateFile(
        path, [&](std::string_view text, std::string& error) { return ReadPlayCounts(text, counts, error); });
}

bool SavePlayCounts(const std::string& path, const PlayCounts& counts) {
    return SaveStateFile(path, PlayCountsText(counts));
}

}  // namespace hullrider
