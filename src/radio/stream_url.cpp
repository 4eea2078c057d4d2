#include "radio/stream_url.h"

#include <chrono>
#include <vector>

#include "platform/console.h"
#include "radio/playlist_files.h"

namespace hullrider {

namespace {

constexpr size_t kMostPlaylistBytes = size_t{1} << 20;
constexpr std::chrono::seconds kStallTimeout{15};

}  // namespace

std::string FetchUrlText(const std::string& url, const HttpFetch& fetch, const std::stop_token& stop) {
    HttpRequest request;
    request.url = url;
    request.maxBodyBytes = kMostPlaylistBytes;
    request.stallTimeout = kStallTimeout;
    const HttpResponse response = fetch(request, stop);
    const bool isFailure = response.end != HttpEnd::kComplete && response.end != HttpEnd::kCanceled;
    if (isFailure) PrintErrorLine("curl_easy_perform() failed: " + response.error);
    return response.body;
}

std::string StreamUrlOf(const std::string& url, const HttpFetch& fetch, const std::stop_token& stop) {
    const PlaylistFile kind = PlaylistFileOf(url);
    if (kind == PlaylistFile::kNone) return url;
    const std::string text = FetchUrlText(url, fetch, stop);
    const std::vector<std::string> entries = kind == PlaylistFile::kPls ? ParsePls(text) : ParseM3u(text);
    if (entries.empty()) return url;
    if (entries.front().empty()) PrintErrorLine("The playlist " + url + " begins with an empty entry.");
    return entries.front();
}

ResolvedUrl ResolveStreamUrl(const std::string& url, const HttpFetch& fetch, const StreamProbe& probe,
                             const std::stop_token& stop) {
    const std::string stream = StreamUrlOf(url, fetch, stop);
    if (stream.empty() || !probe(stream)) return {};
    return {true, stream};
}

std::optional<std::string> FindWorkingUrl(const std::string& stationName, StationDirectoryClient& directory,
                                          const HttpFetch& fetch, const StreamProbe& probe,
                                          const std::stop_token& stop) {
    std::vector<DirectoryStation> found;
    const auto receive = [&found](std::vector<DirectoryStation> stations) {
        found.insert(found.end(), stations.begin(), stations.end());
    };
    directory.SearchStations(stationName, true, receive, stop);
    for (const DirectoryStation& station : found) {
        if (stop.stop_requested()) return std::nullopt;
        if (station.url.empty()) continue;
        const ResolvedUrl resolved = ResolveStreamUrl(station.url, fetch, probe, stop);
        if (!resolved.ok) continue;
        PrintLine("Found valid URL for station '" + stationName + "': " + resolved.url);
        return resolved.url;
    }
    PrintLine((found.empty() ? "No stations found for '" : "No valid URL found for station '") + stationName + "'");
    return std::nullopt;
}

}  // namespace hullrider
