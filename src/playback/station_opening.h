// Opens an internet station: finds its stream, and repairs its URL when it does not open. Worker.
#pragma once

#include <cstdint>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

#include "state/radio_state.h"

namespace hullrider {

struct StationNetwork;  // radio/station_network.h

struct StationRequest {
    std::string name;
    std::string url;
    std::vector<std::string> tags;  // of the directory
    bool mayBeRepaired = true;
    bool intoMain = true;  // which of the two slots will hold it
    std::shared_ptr<const StationNetwork> network;
};

struct OpenedStation {
    uint32_t handle = 0;       // 0: it could not be opened; lines on the console have said why
    std::string repairedUrl;   // that opens instead of the station's own; empty: not repaired
    bool wasSearched = false;  // the directory was asked for another URL
    StreamNowPlaying nowPlaying;
};

// Up to three attempts. Ends soon after `stop` is requested.
OpenedStation OpenStation(const StationRequest& request, const std::stop_token& stop);

// What the stream says of itself at the moment. Any thread.
StreamNowPlaying ReadNowPlaying(uint32_t handle, const std::vector<std::string>& stationTags);

}  // namespace hullrider
