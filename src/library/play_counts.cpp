#include "library/play_counts.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "library/state_json.h"
#include "platform/json.h"

namespace hullrider {

namespace {

// A record in the store, apart from a path too long to be stored inside it.
constexpr size_t kRecordBytes = 88;
constexpr size_t kShortPath = 15;

size_t Keep(PlayCounts& counts, const std::string& path, int64_t read) {
    if (read < 1) return 0;
    const auto [entry, isNew] = counts.byPath.try_emplace(path, 0);
    entry->second = std::max(entry->second, static_cast<int32_t>(std::min<int64_t>(read, INT32_MAX)));
    if (!isNew) return 0;
    return kRecordBytes + (path.size() > kShortPath ? path.size() : 0);
}

}  // namespace

StateReading ReadPlayCounts(std::string_view text, PlayCounts& counts, std::string& error) {
    const auto take = [&counts](const std::string& path, const nlohmann::json& count) {
        return Keep(counts, path, CountOf(count));
    };
    const JsonWalk walk = WalkJson(text, "playCounts", JsonKind::kObject, take);
    error = walk.error;
    if (!walk.found && error.empty()) error = "it contains no play counts";
    if (error.empty()) return StateReading::kWhole;
    return walk.found ? StateReading::kPartly : StateReading::kUnreadable;
}

PlayCountList ListOf(const PlayCounts& counts) {
    return {counts.byPath.begin(), counts.byPath.end()};
}

std::string PlayCountsText(PlayCountList counts) {
    std::sort(counts.begin(), counts.end());
    std::string text = "{\"playCounts\":{";
    const char* separator = "\n";
    for (const auto& [path, count] : counts) {
        text += separator;
        text += QuotedJson(path);
        text += ':' + std::to_string(count);
        separator = ",\n";
    }
    return text + "\n}}\n";
}

void CountPlay(Song& song, PlayCounts& counts) {
    if (song.playCount < INT32_MAX) ++song.playCount;
    int32_t& count = counts.byPath[song.songPath];
    ++counts.revision;
    count = song.playCount = std::max(count, song.playCount);
}

void MergePlayCounts(MusicLibrary& library, PlayCounts& counts) {
    for (Playlist& playlist : library.playlists) {
        for (Song& song : playlist.songs) {
            const auto kept = counts.byPath.find(song.songPath);
            const int32_t before = kept == counts.byPath.end() ? 0 : kept->second;
            song.playCount = std::max({song.playCount, before, 0});
            if (song.playCount == before) continue;
            counts.byPath[song.songPath] = song.playCount;
            ++counts.revision;
        }
    }
}

bool LoadPlayCounts(const std::string& path, PlayCounts& counts) {
    const auto read = [&](std::string_view text, std::string& error) { return ReadPlayCounts(text, counts, error); };
    return LoadStateFile(path, {}, read) != StateReading::kUnreadable;
}

bool SavePlayCounts(const std::string& path, const PlayCounts& counts) {
    return SaveStateFile(path, PlayCountsText(ListOf(counts)));
}

}  // namespace hullrider
