// A station as JSON: in the directory's answers and in the file of recent stations. Pure.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/json.h"
#include "platform/state_files.h"
#include "state/radio_state.h"

namespace hullrider {

// Longer texts than a station can have are cut: the directory is open to everyone. In bytes.
inline constexpr size_t kLongestStationText = 1024;
inline constexpr size_t kMostStationTags = 100;

// Reads "name", "url", "country", "state", "votes", "clickcount" and "tags" (a text with commas, or a list). A missing
// key leaves an empty string or 0. Nothing when `object` is not an object or a key has the wrong type.
std::optional<DirectoryStation> ParseDirectoryStation(const nlohmann::json& object);

// Replaces the list with what `parse` makes of each element of a JSON array, without those of which it makes nothing;
// `unusable` says what these are. The list changes only when the text is an array.
template <typename Station>
StateReading ReadStationList(std::string_view text, std::optional<Station> (*parse)(const nlohmann::json& element),
                             const char* unusable, std::vector<Station>& stations, std::string& error) {
    const std::optional<nlohmann::json> root = ParseJson(text, error);
    if (!root) return StateReading::kUnreadable;
    if (!root->is_array()) {
        error = "it is not a list of stations";
        return StateReading::kUnreadable;
    }
    std::vector<Station> loaded;
    for (const nlohmann::json& element : *root) {
        if (std::optional<Station> station = parse(element)) loaded.push_back(std::move(*station));
    }
    stations.swap(loaded);
    if (stations.size() == root->size()) return StateReading::kWhole;
    error = std::to_string(root->size() - stations.size()) + " of its entries " + unusable;
    return StateReading::kPartly;
}

// The object's string of that key, cut to kLongestStationText at a character boundary; empty when it is missing or
// something else.
std::string StationText(const nlohmann::json& object, const char* key);

// The object's "tags": a text with commas, or a list of texts.
std::vector<std::string> StationTags(const nlohmann::json& object);

// The object's whole number of that key, cut to 32 bits; 0 when it is missing or something else.
int32_t StationNumber(const nlohmann::json& object, const char* key);

}  // namespace hullrider
