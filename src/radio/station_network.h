// How stations reach the network. A test answers instead.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/http.h"
#include "radio/station_directory.h"

namespace hullrider {

struct StationNetwork {
    std::function<HttpFetch()> makeFetch;  // for one thread each
    std::shared_ptr<StationDirectoryClient> directory;
};

// The real network, with these mirrors of the station directory.
StationNetwork MakeStationNetwork(std::vector<std::string> mirrors = DirectoryMirrors());

}  // namespace hullrider
