#include "radio/station_directory.h"

#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <utility>

#include "platform/console.h"
#include "platform/json.h"
#include "radio/directory_queries.h"
#include "radio/directory_station.h"
#include "radio/playlist_files.h"

namespace hullrider {

namespace {

constexpr std::chrono::seconds kProbeTimeout{5}, kStallTimeout{15};
constexpr size_t kMostAnswerBytes = size_t{32} << 20, kMostHeaderBytes = size_t{64} << 10;

bool Answers(const std::string& mirror, const HttpFetch& fetch, const std::stop_token& stop) {
    HttpRequest request;
    request.url = mirror;
    request.isHead = true;
    request.wholeTimeout = kProbeTimeout;
    return fetch(request, stop).end == HttpEnd::kComplete;
}

// The directory's answer as text; nothing, with a line on the error stream, when it did not come.
std::optional<std::string> FetchAnswer(const std::string& url, const HttpFetch& fetch, const std::stop_token& stop) {
    HttpRequest request;
    request.url = url;
    request.userAgent = "libcurl-agent/1.0";
    request.maxBodyBytes = kMostAnswerBytes;
    request.maxHeaderBytes = kMostHeaderBytes;
    request.stallTimeout = kStallTimeout;
    HttpResponse response = fetch(request, stop);
    if (response.end == HttpEnd::kComplete) return std::move(response.body);
    if (response.end != HttpEnd::kCanceled) PrintErrorLine("Failed to fetch data from the server");
    return std::nullopt;
}

// The stations of an answer whose URL was not seen before and may be a stream.
std::vector<DirectoryStation> ReadAnswer(const std::string& text, std::set<std::string>& seen) {
    std::string error;
    const std::optional<nlohmann::json> root = ParseJson(text, error);
    std::vector<DirectoryStation> stations;
    if (!root) {
        PrintErrorLine("JSON parse error: " + error);
        return stations;
    }
    if (!root->is_array()) return stations;
    for (const nlohmann::json& element : *root) {
        if (!element.is_object()) continue;
        std::optional<DirectoryStation> station = ParseDirectoryStation(element);
        if (!station) {
            PrintErrorLine("JSON parse error: a station has a value of the wrong type");
            continue;
        }
        if (IsUnsupportedStreamUrl(station->url) || !seen.insert(station->url).second) continue;
        stations.push_back(std::move(*station));
    }
    return stations;
}

}  // namespace

std::vector<std::string> DirectoryMirrors() {
    return {"https://all.api.radio-browser.info", "https://de2.api.radio-browser.info",
            "https://fi1.api.radio-browser.info"};
}

StationDirectoryClient::StationDirectoryClient(std::vector<std::string> mirrors, std::function<HttpFetch()> makeFetch,
                                               std::function<int64_t()> now)
    : mirrors_(std::move(mirrors)), makeFetch_(std::move(makeFetch)), now_(std::move(now)) {}

std::string StationDirectoryClient::PickMirror(const std::stop_token& stop) {
    const std::lock_guard lock(mutex_);
    if (!working_) {
        const HttpFetch fetch = makeFetch_();
        std::vector<std::string> working;
        for (const std::string& mirror : mirrors_) {
            if (Answers(mirror, fetch, stop)) working.push_back(mirror);
        }
        if (stop.stop_requested()) return {};  // what did not answer was perhaps not given the time to
        working_ = std::move(working);
    }
    if (working_->empty()) return {};
    std::minstd_rand random(static_cast<std::minstd_rand::result_type>(now_()));
    return (*working_)[random() % working_->size()];
}

void StationDirectoryClient::SearchStations(const std::string& text, bool expandWords, const Receive& receive,
                                            const std::stop_token& stop) {
    if (text.size() < kShortestSearch) return;
    const std::string base = PickMirror(stop);
    const HttpFetch fetch = makeFetch_();
    std::set<std::string> seen;
    for (const std::string& query : SearchQueries(text, expandWords)) {
        for (const std::string& url : RequestUrls(base, query)) {
            if (stop.stop_requested()) return;
            const std::optional<std::string> answer = FetchAnswer(url, fetch, stop);
            if (answer) receive(ReadAnswer(*answer, seen));
        }
    }
}

}  // namespace hullrider
