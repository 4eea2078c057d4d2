#include "app/station_files.h"

#include "platform/paths.h"
#include "platform/state_files.h"
#include "radio/recent_stations_file.h"
#include "radio/stations_file.h"

namespace hullrider {

namespace {

std::string StationsPath(const AppState& app) {
    return StatePath(app.shell.dataDirectory, kStationsFile);
}

std::string RecentStationsPath(const AppState& app) {
    return StatePath(app.shell.dataDirectory, kRecentStationsFile);
}

}  // namespace

void LoadStationFiles(AppState& app) {
    LoadInternetStations(StationsPath(app), app.radio.stations);
    if (app.radio.stations.empty()) LoadInternetStations(kStationsFile, app.radio.stations);
    LoadRecentStations(RecentStationsPath(app), app.radio.recentStations);
}

void SaveStationsFile(const AppState& app) {
    SaveInternetStations(StationsPath(app), app.radio.stations);
}

void SaveRecentStationsFile(const AppState& app) {
    SaveRecentStations(RecentStationsPath(app), app.radio.recentStations);
}

}  // namespace hullrider
