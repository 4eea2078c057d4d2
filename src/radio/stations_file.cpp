#include "radio/stations_file.h"

#include <nlohmann/json.hpp>

#include "radio/directory_station.h"

namespace hullrider {

namespace {

using Json = nlohmann::ordered_json;

bool FlagIn(const nlohmann::json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() || !found->is_boolean() || found->get<bool>();
}

// A station without a URL cannot be played, shown or mended: nothing.
std::optional<InternetStation> StationFrom(const nlohmann::json& element) {
    if (!element.is_object()) return std::nullopt;
    InternetStation station;
    station.name = StationText(element, "name");
    station.url = StationText(element, "url");
    station.favorite = StationNumber(element, "favorite");
    station.favoriteCount = StationNumber(element, "favoriteCount");
    if (station.url.empty()) return std::nullopt;
    if (!element.contains("country") && !element.contains("tags")) return station;
    station.country = StationText(element, "country");
    station.state = StationText(element, "state");
    station.tags = StationTags(element);
    station.clickCount = StationNumber(element, "clickCount");
    station.votes = StationNumber(element, "votes");
    station.isValid = FlagIn(element, "isValid");
    station.isIncluded = FlagIn(element, "isIncluded");
    station.oldUrl = StationText(element, "oldUrl");
    return station;
}

Json JsonOf(const InternetStation& station) {
    Json json{{"name", station.name},
              {"url", station.url},
              {"country", station.country},
              {"state", station.state},
              {"tags", station.tags},
              {"favorite", station.favorite},
              {"favoriteCount", station.favoriteCount},
              {"clickCount", station.clickCount},
              {"votes", station.votes},
              {"isValid", station.isValid},
              {"isIncluded", station.isIncluded}};
    if (!station.oldUrl.empty()) json["oldUrl"] = station.oldUrl;
    return json;
}

}  // namespace

StateReading ReadInternetStations(std::string_view text, std::vector<InternetStation>& stations, std::string& error) {
    return ReadStationList(text, StationFrom, "have no URL", stations, error);
}

StateReading LoadInternetStations(const std::string& path, std::vector<InternetStation>& stations) {
    return LoadStateFile(
        path, "Unable to open file for reading: " + path,
        [&stations](std::string_view text, std::string& error) { return ReadInternetStations(text, stations, error); });
}

std::string InternetStationsText(const std::vector<InternetStation>& stations) {
    Json list = Json::array();
    for (const InternetStation& station : stations) list.push_back(JsonOf(station));
    return list.dump(1, '\t', false, Json::error_handler_t::replace) + "\n";
}

bool SaveInternetStations(const std::string& path, const std::vector<InternetStation>& stations) {
    return SaveStateFile(path, InternetStationsText(stations), "Unable to open file for writing: " + path);
}

}  // namespace hullrider
