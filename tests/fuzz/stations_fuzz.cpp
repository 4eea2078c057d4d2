// What stations bring from the network as text: playlist files, the directory's answers, headers and titles. The first
// byte selects the parser.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "radio/directory_station.h"
#include "radio/playlist_files.h"
#include "radio/stations_file.h"
#include "radio/stream_tags.h"

namespace hullrider {
namespace {

void ReadPlaylists(const std::string& text) {
    for (const std::string& entry : ParseM3u(text)) {
        if (entry.find('\n') != std::string::npos) std::abort();
    }
    if (ParsePls(text).size() > text.size()) std::abort();
}

void ReadStations(const std::string& text) {
    std::string error;
    std::vector<DirectoryStation> found;
    ReadStationList(text, ParseDirectoryStation, "", found, error);
    for (const DirectoryStation& station : found) {
        if (station.name.size() > kLongestStationText || station.tags.size() > kMostStationTags) std::abort();
    }
    std::vector<InternetStation> own;
    ReadInternetStations(text, own, error);
    std::vector<InternetStation> again;
    const StateReading reading = ReadInternetStations(InternetStationsText(own), again, error);
    if (reading != StateReading::kWhole || again.size() != own.size()) std::abort();
}

void ReadTags(const std::string& text) {
    const std::string block = text + std::string(2, '\0');
    const StreamNowPlaying playing = ReadStreamTags({block.c_str(), text.c_str(), block.c_str()}, {});
    if (playing.stationName.empty() || playing.songTitle.empty()) std::abort();
    if (playing.songTitle.size() > kLongestSongTitle) std::abort();
}

}  // namespace
}  // namespace hullrider

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const std::string text(data + 1, data + size);
    switch (data[0] % 3) {
        case 0:
            hullrider::ReadPlaylists(text);
            break;
        case 1:
            hullrider::ReadStations(text);
            break;
        default:
            hullrider::ReadTags(text);
    }
    return 0;
}
