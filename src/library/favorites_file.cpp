#include "library/favorites_file.h"

#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "library/favorites.h"
#include "library/music_type.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/folder.h"
#include "platform/json.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

using Json = nlohmann::json;

constexpr size_t kEntryBytes = 200;  // of an entry in a growing list, and in the list that it is merged into
constexpr const char* kListKey = "favorites";
constexpr const char* kTypeKey = "songType";
constexpr const char* kSongKey = "songIndex";
constexpr const char* kPlaylistKey = "plistIndex";
constexpr const char* kCountKey = "favoriteCount";
constexpr const char* kPathKey = "songPath";

std::optional<int32_t> NumberIn(const Json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_number_integer()) return std::nullopt;
    if (found->is_number_unsigned()) {
        return static_cast<int32_t>(std::min<uint64_t>(found->get<uint64_t>(), INT32_MAX));
    }
    return static_cast<int32_t>(std::clamp<int64_t>(found->get<int64_t>(), INT32_MIN, INT32_MAX));
}

// Nothing when the element names no song.
std::optional<FavoriteEntry> EntryFrom(const Json& element) {
    if (!element.is_object()) return std::nullopt;
    const auto path = element.find(kPathKey);
    if (path == element.end() || !path->is_string()) return std::nullopt;
    FavoriteEntry entry;
    entry.songPath = path->get<std::string>();
    if (entry.songPath.empty() || entry.songPath.find('\0') != std::string::npos) return std::nullopt;
    entry.songType = NumberIn(element, kTypeKey).value_or(MusicTypeOf(entry.songPath));
    entry.songIndex = std::max(NumberIn(element, kSongKey).value_or(-1), -1);
    entry.plistIndex = std::max(NumberIn(element, kPlaylistKey).value_or(-1), -1);
    entry.favoriteCount = NumberIn(element, kCountKey).value_or(1);
    if (entry.favoriteCount == 0) entry.favoriteCount = 1;
    return entry;
}

void AppendEntry(std::string& text, const FavoriteEntry& entry) {
    const auto append = [&text](std::string_view before, const char* key, const std::string& value) {
        text.append(before).append(key).append("\":").append(value);
    };
    append("{\"", kTypeKey, std::to_string(entry.songType));
    append(",\"", kSongKey, std::to_string(entry.songIndex));
    append(",\"", kPlaylistKey, std::to_string(entry.plistIndex));
    append(",\"", kCountKey, std::to_string(entry.favoriteCount));
    append(",\"", kPathKey, QuotedJson(entry.songPath));
    text += '}';
}

}  // namespace

FavoritesReading ReadFavorites(std::string_view text) {
    FavoritesReading reading;
    const auto take = [&reading](const std::string& /*name*/, const Json& element) {
        std::optional<FavoriteEntry> entry = EntryFrom(element);
        if (!entry) {
            ++reading.dropped;
            return size_t{0};
        }
        reading.entries.push_back(std::move(*entry));
        return kEntryBytes + reading.entries.back().songPath.size();
    };
    const JsonWalk walk = WalkJson(text, kListKey, JsonKind::kList, take);
    reading.isFavorites = walk.found;
    reading.error = walk.error;
    if (!walk.found && walk.error.empty()) reading.error = "it contains no list of favorites";
    return reading;
}

FavoritesLoad LoadFavorites(const std::string& path, FavoritesState& favorites) {
    std::string error;
    const std::optional<std::string> text = ReadStateFile(path, kMostStateBytes, error);
    if (!text) {
        PrintErrorLine("Failed to open " + path + " for reading." + (error.empty() ? "" : " Reason: " + error));
        return FavoritesLoad::kUnreadable;
    }
    const FavoritesReading reading = ReadFavorites(*text);
    MergeFavorites(favorites, reading.entries);
    if (!reading.error.empty()) PrintErrorLine("Failed to read " + path + ": " + reading.error);
    if (!reading.isFavorites) return FavoritesLoad::kUnreadable;
    return reading.error.empty() && reading.dropped == 0 ? FavoritesLoad::kWhole : FavoritesLoad::kPartly;
}

FavoritesLoad LoadOwnFavorites(const std::string& path, FavoritesState& favorites) {
    FavoritesState own;
    const FavoritesLoad load = LoadFavorites(path, own);
    if (load != FavoritesLoad::kWhole && IsFile(path)) KeepBadFile(path);
    MergeFavorites(own, favorites.list);
    favorites = std::move(own);
    return load;
}

std::string FavoritesText(const std::vector<FavoriteEntry>& list) {
    std::string text = std::string("{\"") + kListKey + "\":[";
    std::string_view separator = "\n";
    for (const FavoriteEntry& entry : list) {
        text += std::exchange(separator, ",\n");
        AppendEntry(text, entry);
    }
    return text + "]}\n";
}

bool SaveFavorites(const std::string& path, const FavoritesState& favorites) {
    return SaveStateFile(path, FavoritesText(favorites.list), "Failed to open " + path + " for writing.");
}

}  // namespace hullrider
