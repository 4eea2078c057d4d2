// Finds the stream behind a station's URL, and a working URL for a station that no longer plays. Blocking: for workers.
#pragma once

#include <functional>
#include <optional>
#include <stop_token>
#include <string>

#include "platform/http.h"
#include "radio/station_directory.h"

namespace hullrider {

// Whether a stream opens.
using StreamProbe = std::function<bool(const std::string& url)>;

struct ResolvedUrl {
    bool ok = false;
    std::string url;  // empty when it is not ok
};

// The page's text, 1 MB at most. When the transfer fails, a line on the error stream and what has arrived.
std::string FetchUrlText(const std::string& url, const HttpFetch& fetch, const std::stop_token& stop);

// The first entry of the playlist file (radio/playlist_files.h) that the URL names; the URL itself when it names none,
// or one without entries. Empty, with a line on the error stream, when the first entry is.
std::string StreamUrlOf(const std::string& url, const HttpFetch& fetch, const std::stop_token& stop);

ResolvedUrl ResolveStreamUrl(const std::string& url, const HttpFetch& fetch, const StreamProbe& probe,
                             const std::stop_token& stop);

// Searches the directory for the name and returns the first stream that opens. Says on the console what was found.
std::optional<std::string> FindWorkingUrl(const std::string& stationName, StationDirectoryClient& directory,
                                          const HttpFetch& fetch, const StreamProbe& probe,
                                          const std::stop_token& stop);

}  // namespace hullrider
