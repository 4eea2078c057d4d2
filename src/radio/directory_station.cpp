#include "radio/directory_station.h"

#include <algorithm>
#include <cstdint>

namespace hullrider {

namespace {

using Json = nlohmann::json;

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

std::string Cut(std::string text) {
    if (text.size() <= kLongestStationText) return text;
    size_t end = kLongestStationText;
    while (end > 0 && IsContinuation(text[end])) --end;
    text.resize(end);
    return text;
}

bool HasOtherThan(const Json& object, const char* key, bool (Json::*isRight)() const noexcept) {
    const auto found = object.find(key);
    return found != object.end() && !((*found).*isRight)();
}

std::vector<std::string> SplitTags(const std::string& text) {
    std::vector<std::string> tags;
    size_t begin = 0;
    while (tags.size() < kMostStationTags) {
        const size_t comma = text.find(',', begin);
        if (comma == std::string::npos) break;
        tags.push_back(Cut(text.substr(begin, comma - begin)));
        begin = comma + 1;
    }
    if (begin < text.size() && tags.size() < kMostStationTags) tags.push_back(Cut(text.substr(begin)));
    return tags;
}

}  // namespace

std::optional<DirectoryStation> ParseDirectoryStation(const Json& object) {
    if (!object.is_object()) return std::nullopt;
    for (const char* key : {"name", "url", "country", "state"}) {
        if (HasOtherThan(object, key, &Json::is_string)) return std::nullopt;
    }
    for (const char* key : {"votes", "clickcount"}) {
        if (HasOtherThan(object, key, &Json::is_number)) return std::nullopt;
    }
    DirectoryStation station;
    station.name = StationText(object, "name");
    station.url = StationText(object, "url");
    station.country = StationText(object, "country");
    station.state = StationText(object, "state");
    station.votes = StationNumber(object, "votes");
    station.clickCount = StationNumber(object, "clickcount");
    station.tags = StationTags(object);
    return station;
}

std::string StationText(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found != object.end() && found->is_string() ? Cut(found->get<std::string>()) : std::string();
}

int32_t StationNumber(const Json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_number_integer()) return 0;
    if (found->is_number_unsigned()) {
        return static_cast<int32_t>(std::min<uint64_t>(found->get<uint64_t>(), INT32_MAX));
    }
    return static_cast<int32_t>(std::clamp<int64_t>(found->get<int64_t>(), INT32_MIN, INT32_MAX));
}

std::vector<std::string> StationTags(const Json& object) {
    const auto found = object.find("tags");
    if (found == object.end()) return {};
    if (found->is_string()) return SplitTags(found->get_ref<const std::string&>());
    std::vector<std::string> tags;
    if (!found->is_array()) return tags;
    for (const Json& tag : *found) {
        if (tag.is_string() && tags.size() < kMostStationTags) tags.push_back(Cut(tag.get<std::string>()));
    }
    return tags;
}

}  // namespace hullrider
