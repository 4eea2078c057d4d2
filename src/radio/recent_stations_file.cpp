#include "radio/recent_stations_file.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "radio/directory_station.h"

namespace hullrider {

namespace {

using Json = nlohmann::ordered_json;

}  // namespace

StateReading LoadRecentStations(const std::string& path, std::vector<DirectoryStation>& stations) {
    return LoadStateFile(path, "Failed to open file for reading.",
                         [&stations](std::string_view text, std::string& error) {
                             return ReadStationList(text, ParseDirectoryStation, "are no stations", stations, error);
                         });
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
