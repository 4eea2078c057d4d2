#include "playback/station_play.h"

#include <algorithm>
#include <utility>

#include "audio/bass.h"
#include "platform/console.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

constexpr std::chrono::hours kRepairAgainAfter{1};
constexpr size_t kMostTitles = 100;  // of a station
constexpr size_t kMostStations = 500;

int64_t SecondsSince1970() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

void KeepTitle(RadioState& radio, const std::string& url, const std::string& title) {
    if (title.empty()) return;
    if (radio.heardTitles.size() >= kMostStations && !radio.heardTitles.contains(url)) return;
    std::vector<HeardTitle>& titles = radio.heardTitles[url];
    if (!titles.empty() && titles.back().title == title) return;
    if (titles.size() == kMostTitles) titles.erase(titles.begin());
    titles.push_back({SecondsSince1970(), title});
    PrintLine("On air: " + title);
}

std::vector<std::string> TagsOfStation(const AppState& app) {
    const auto place = static_cast<size_t>(app.playback.item.place.playlist);
    return place < app.radio.stations.size() ? app.radio.stations[place].tags : std::vector<std::string>();
}

}  // namespace

bool IsStationPlaying(const PlaybackState& playback) {
    return playback.item.kind == PlayItem::Kind::kStation && CurrentHandle(playback) != 0;
}

void NoteStall(PlaybackState& playback) {
    const bool stalls =
        IsStationPlaying(playback) && BASS_ChannelIsActive(CurrentHandle(playback)) == BASS_ACTIVE_STALLED;
    if (!stalls) {
        playback.stalledSince.reset();
    } else if (!playback.stalledSince) {
        playback.stalledSince = PlayNow();
    }
}

bool HasRunDry(const PlaybackState& playback) {
    return playback.stalledSince && PlayNow() - *playback.stalledSince >= kLongestStall;
}

bool IsStreamInDanger(const PlaybackState& playback) {
    if (!IsStationPlaying(playback)) return false;
    return playback.stalledSince || BASS_StreamGetFilePosition(CurrentHandle(playback), BASS_FILEPOS_CONNECTED) == 0;
}

bool StaysWithStation(const AppState& app) {
    const SelectionState& selection = app.selection;
    return IsStationPlaying(app.playback) && selection.playMode == kStationMode && !selection.previousSongMode &&
           app.playback.item.place.playlist == selection.currentInternetStation && !app.playback.stalledSince &&
           BASS_ChannelIsActive(CurrentHandle(app.playback)) != BASS_ACTIVE_STOPPED;
}

bool WaitsForStation(const AppState& app) {
    return app.selection.playMode == kStationMode && app.playback.item.kind == PlayItem::Kind::kSong &&
           CurrentHandle(app.playback) != 0;
}

std::string SongTitleOf(const StreamNowPlaying& nowPlaying) {
    const std::string& title = nowPlaying.songTitle;
    if (title == kUnknownSong) return {};
    const bool isQuoted = title.size() >= 2 && title.front() == '\'' && title.back() == '\'';
    return isQuoted ? title.substr(1, title.size() - 2) : title;
}

void RefreshNowPlaying(AppState& app) {
    if (!IsStationPlaying(app.playback)) return;
    app.radio.nowPlaying = ReadNowPlaying(CurrentHandle(app.playback), TagsOfStation(app));
    KeepTitle(app.radio, app.playback.item.address, SongTitleOf(app.radio.nowPlaying));
}

bool MayBeRepaired(const PickerState& picker, const std::string& stationName) {
    const auto last = picker.searchedStations.find(stationName);
    return last == picker.searchedStations.end() || PlayNow() - last->second >= kRepairAgainAfter;
}

void KeepRepair(AppState& app, PickerState& picker, const std::string& stationName, const Opened& opened) {
    if (opened.wasSearched) picker.searchedStations[stationName] = PlayNow();
    if (opened.repairedUrl.empty()) return;
    std::vector<InternetStation>& stations = app.radio.stations;
    const auto station = std::find_if(stations.begin(), stations.end(),
                                      [&](const InternetStation& each) { return each.name == stationName; });
    if (station == stations.end()) return;
    station->oldUrl = std::exchange(station->url, opened.repairedUrl);
    station->isValid = true;
    ++app.radio.revision;
}

}  // namespace hullrider
