// Finds stations in the public Radio Browser directory (its API: https://docs.radio-browser.info). Blocking: for
// workers, any number at once.
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "platform/http.h"
#include "state/radio_state.h"

namespace hullrider {

// The mirrors of the directory, scheme and host.
std::vector<std::string> DirectoryMirrors();

class StationDirectoryClient {
public:
    // Receives the stations of each answer as it arrives.
    using Receive = std::function<void(std::vector<DirectoryStation> stations)>;

    // `makeFetch` is called for each search, `now` gives the time in seconds.
    StationDirectoryClient(std::vector<std::string> mirrors, std::function<HttpFetch()> makeFetch,
                           std::function<int64_t()> now);

    // One of the mirrors that answered when they were probed, which the first call does; empty when none did. Calls
    // within one second give the same one.
    std::string PickMirror(const std::stop_token& stop);

    // Hands over the stations that match, each URL once, in the directory's order. Failures are lines on the error
    // stream, and the next request goes on. Ends soon after `stop` is requested.
    void SearchStations(const std::string& text, bool expandWords, const Receive& receive, const std::stop_token& stop);

private:
    const std::vector<std::string> mirrors_;
    const std::function<HttpFetch()> makeFetch_;
    const std::function<int64_t()> now_;
    std::mutex mutex_;
    std::optional<std::vector<std::string>> working_;  // nothing before the probe
};

}  // namespace hullrider
