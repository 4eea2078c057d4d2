#include "library/favorites_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "library/favorites.h"
#include "library/music_type.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/folder.h"

namespace hullrider {

namespace {

using Json = nlohmann::json;

constexpr size_t kMaxFavoritesBytes = size_t{64} << 20;
constexpr size_t kMaxErrorBytes = 1000;  // the parser quotes what it stumbled over, however long that is
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
    const auto path = element.find(kPathKey);
    if (path == element.end() || !path->is_string()) return std::nullopt;
    FavoriteEntry entry;
    entry.songPath = path->get<std::string>();
    if (entry.songPath.empty() || entry.songPath.find('\0') != std::string::npos) return std::nullopt;
    entry.songType = NumberIn(element, kTypeKey).value_or(MusicTypeOf(entry.songPath));
    entry.songIndex = std::max(NumberIn(element, kSongKey).value_or(-1), -1);
    entry.plistIndex = std::max(NumberIn(element, kPlaylistKey).value_or(-1), -1);
    entry.favoriteCount = std::max(NumberIn(element, kCountKey).value_or(1), 1);
    return entry;
}

// Takes the elements while the parser runs, and has it forget them and whatever else the text holds: a tree of a
// hostile text would take many times its memory.
class Taker {
public:
    explicit Taker(FavoritesReading& reading) : reading_(reading) {}

    // Returns whether the parser is to keep the value. The depth is that of the parser: 0 the root, 1 its values, 2 the
    // elements, 3 their fields.
    bool operator()(int depth, Json::parse_event_t event, Json& value) {
        using Event = Json::parse_event_t;
        if (depth == 0) return rootIsObject_ = rootIsObject_ || event == Event::object_start;
        if (!rootIsObject_) return false;
        if (event == Event::key) return depth == 1 ? (inList_ = value == kListKey) : depth == 3 && IsField(value);
        if (depth == 1) return TakeList(event);
        if (depth == 2) return TakeElement(event, value);
        return depth == 3 && event == Event::value;
    }

private:
    static bool IsField(const Json& key) {
        constexpr std::array kFields{kTypeKey, kSongKey, kPlaylistKey, kCountKey, kPathKey};
        return std::any_of(kFields.begin(), kFields.end(), [&](const char* field) { return key == field; });
    }

    bool TakeList(Json::parse_event_t event) {
        const bool isList =
            inList_ && (event == Json::parse_event_t::array_start || event == Json::parse_event_t::array_end);
        reading_.isFavorites = reading_.isFavorites || isList;
        return isList;
    }

    // An element is kept until it is complete.
    bool TakeElement(Json::parse_event_t event, const Json& element) {
        if (event == Json::parse_event_t::object_start) return true;
        std::optional<FavoriteEntry> entry;
        if (event == Json::parse_event_t::object_end) entry = EntryFrom(element);
        if (entry) {
            reading_.entries.push_back(std::move(*entry));
        } else {
            ++reading_.dropped;
        }
        return false;
    }

    FavoritesReading& reading_;
    bool rootIsObject_ = false;
    bool inList_ = false;  // the last key of the root was that of the list
};

void AppendEntry(std::string& text, const FavoriteEntry& entry) {
    const auto append = [&text](std::string_view before, const char* key, const std::string& value) {
        text.append(before).append(key).append("\":").append(value);
    };
    append("{\"", kTypeKey, std::to_string(entry.songType));
    append(",\"", kSongKey, std::to_string(entry.songIndex));
    append(",\"", kPlaylistKey, std::to_string(entry.plistIndex));
    append(",\"", kCountKey, std::to_string(entry.favoriteCount));
    append(",\"", kPathKey, Json(entry.songPath).dump(-1, ' ', false, Json::error_handler_t::replace));
    text += '}';
}

}  // namespace

FavoritesReading ReadFavorites(std::string_view text) {
    FavoritesReading reading;
    try {
        Taker taker(reading);
        const Json root = Json::parse(text, std::ref(taker));
        if (!reading.isFavorites) reading.error = "it holds no favourites";
    } catch (const Json::exception& exception) {
        reading.error = std::string(exception.what()).substr(0, kMaxErrorBytes);
    }
    return reading;
}

FavoritesLoad LoadFavorites(const std::string& path, FavoritesState& favorites) {
    const std::optional<std::string> text = ReadStateFile(path, kMaxFavoritesBytes);
    if (!text) {
        PrintErrorLine("Failed to open " + path + " for reading.");
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

std::string FavoritesText(const FavoritesState& favorites) {
    std::string text = std::string("{\"") + kListKey + "\":[";
    std::string_view separator = "\n";
    for (const FavoriteEntry& entry : favorites.list) {
        text += std::exchange(separator, ",\n");
        AppendEntry(text, entry);
    }
    return text + "]}\n";
}

bool SaveFavorites(const std::string& path, const FavoritesState& favorites) {
    if (WriteWholeFile(path, FavoritesText(favorites))) return true;
    PrintErrorLine("Failed to open " + path + " for writing.");
    return false;
}

}  // namespace hullrider
