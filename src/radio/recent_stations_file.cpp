#include "radio/recent_stations_file.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "platform/json.h"
#include "radio/directory_station.h"

namespace hullrider {

namespace {

using Json = nlohmann::ordered_json;

StateReading ReadRecentStations(std::string_view text, std::vector<DirectoryStation>& stations, std::string& error) {
    const std::optional<nlohmann::json> root = ParseJson(text, error);
    if (!root) return StateReading::kUnreadable;
    if (!root->is_array()) {
        error = "it is not a list of stations";
        return StateReading::kUnreadable;
    }
    std::vector<DirectoryStation> loaded;
    for (const nlohmann::json& element : *root) {
        if (std::optional<DirectoryStation> station = ParseDirectoryStation(element)) {
            loaded.push_back(std::move(*station));
        }
    }
    stations.swap(loaded);
    if (stations.size() == root->size()) return StateReading::kWhole;
    error = std::to_string(root->size() - stations.size()) + " of its entries are no stations";
    return StateReading::kPartly;
}

}  // namespace

StateReading LoadRecentStations(const std::string& path, std::vector<DirectoryStation>& stations) {
    return LoadStateFile(
        path, "Failed to open file for reading.",
        [&stations](std::string_view text, std::string& error) { return ReadRecentStations(text, stations, error); });
}

bool SaveRecentStations(const std::string& path, const std::vector<DirectoryStation>& stations) {
    Json list = Json::array();
    for (size_t i = stations.size() - std::min(stations.size(), kMostRecentStations); i < stations.size(); ++i) {
        const DirectoryStation& station = stations[i];
        list.push_back({{"name", station.name},
                        {"url", station.url},
                        {"country", station.country},
                        {"state", station.state},
                        {"clickCount", station.clickCount},
                        {"votes", station.votes},
                        {"tags", station.tags}});
    }
    const std::string text = list.dump(1, '\t', false, Json::error_handler_t::replace) + "\n";
    return SaveStateFile(path, text, "Failed to open file for writing.");
}

}  // namespace hullrider
