#include "radio/station_network.h"

#include <ctime>
#include <utility>

namespace hullrider {

StationNetwork MakeStationNetwork(std::vector<std::string> mirrors) {
    const auto now = [] { return static_cast<int64_t>(std::time(nullptr)); };
    return {MakeHttpFetch, std::make_shared<StationDirectoryClient>(std::move(mirrors), MakeHttpFetch, now)};
}

}  // namespace hullrider
