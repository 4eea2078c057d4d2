#include "playback/station_opening.h"

#include <optional>

#include "audio/bass.h"
#include "platform/console.h"
#include "radio/station_network.h"
#include "radio/stream_tags.h"
#include "radio/stream_url.h"

namespace hullrider {

namespace {

constexpr int kAttempts = 3;
constexpr uint32_t kStreamFlags = BASS_STREAM_STATUS | BASS_SAMPLE_FLOAT;

bool Opens(const std::string& url) {
    const HSTREAM stream = BASS_StreamCreateURL(url.c_str(), 0, kStreamFlags, nullptr, nullptr);
    if (stream != 0) BASS_StreamFree(stream);
    return stream != 0;
}

HSTREAM CreateStream(const std::string& url, const HttpFetch& fetch, const std::stop_token& stop) {
    const std::string stream = StreamUrlOf(url, fetch, stop);
    const HSTREAM handle = BASS_StreamCreateURL(stream.c_str(), 0, kStreamFlags | BASS_SAMPLE_LOOP, nullptr, nullptr);
    if (handle == 0 && !stop.stop_requested()) {
        PrintErrorLine("Error creating stream. Error code: " + std::to_string(BASS_ErrorGetCode()));
    }
    return handle;
}

// Asks the directory once.
void Repair(const StationRequest& request, const HttpFetch& fetch, const std::stop_token& stop, OpenedStation& opened) {
    const bool asks = request.mayBeRepaired && !opened.wasSearched && request.network->directory != nullptr;
    if (asks) {
        opened.wasSearched = true;
        const std::optional<std::string> url =
            FindWorkingUrl(request.name, *request.network->directory, fetch, Opens, stop);
        opened.repairedUrl = url.value_or("");
    }
    PrintLine(opened.repairedUrl.empty() ? "Failed to fix URL. Retrying with original..." : "URL fixed. Retrying...");
}

}  // namespace

OpenedStation OpenStation(const StationRequest& request, const std::stop_token& stop) {
    PrintLine(request.intoMain ? "Loading song/radio into main musicStream."
                               : "Loading next song/radio into musicStreamNext.");
    const HttpFetch fetch = request.network->makeFetch();
    OpenedStation opened;
    for (int attempt = 1; attempt <= kAttempts && !stop.stop_requested(); ++attempt) {
        if (attempt > 1) Repair(request, fetch, stop, opened);
        opened.handle = CreateStream(opened.repairedUrl.empty() ? request.url : opened.repairedUrl, fetch, stop);
        if (opened.handle == 0) continue;
        opened.nowPlaying = ReadNowPlaying(opened.handle, request.tags);
        return opened;
    }
    if (stop.stop_requested()) return opened;
    PrintErrorLine("Failed to create stream after " + std::to_string(kAttempts) +
                   " attempts. Attempting to play next song.");
    return opened;
}

StreamNowPlaying ReadNowPlaying(uint32_t handle, const std::vector<std::string>& stationTags) {
    // Copied, because each call may replace what the last one returned.
    const auto copy = [handle](uint32_t kind) {
        std::string block;
        const char* text = BASS_ChannelGetTags(handle, kind);
        for (; text != nullptr && *text != '\0'; text += std::string_view(text).size() + 1) {
            block.append(text).push_back('\0');
            if (kind == BASS_TAG_META) break;
        }
        return block;
    };
    std::string headers = copy(BASS_TAG_ICY);
    if (headers.empty()) headers = copy(BASS_TAG_HTTP);
    const std::string metadata = copy(BASS_TAG_META), comments = copy(BASS_TAG_OGG);
    return ReadStreamTags({headers.c_str(), metadata.c_str(), comments.c_str()}, stationTags);
}

}  // namespace hullrider
