#include "playback/next_item.h"

#include <algorithm>

#include "platform/console.h"
#include "playback/queue.h"

namespace hullrider {

namespace {

Pick SelectFreely(const AppState& app, PickerState& picker) {
    if (app.selection.customStationActive) return SelectForCustomStation(app, picker);
    return SelectNextSong(app, picker, kNoCategory);
}

// Nothing is kept of how it was drawn: radio comes again with the next draw.
Pick SelectMusic(const AppState& app, PickerState& picker) {
    Pick pick = SelectSongOnly(app, picker);
    pick.weights.reset();
    return pick.result == Selection::kItem ? pick : SelectFreely(app, picker);
}

Pick PickStation(const AppState& app, int32_t station) {
    Pick pick;
    if (station < 0 || static_cast<size_t>(station) >= app.radio.stations.size()) return pick;
    pick.result = Selection::kItem;
    pick.item = MakeStationItem(app.radio, station);
    pick.station = station;
    return pick;
}

Pick PickSong(const AppState& app, const SongChoice& wanted) {
    Pick pick;
    if (FindSong(app.library, {wanted.playlist, wanted.song}) == nullptr) return pick;
    pick.result = Selection::kItem;
    pick.item = MakeSongItem(app.library, {wanted.playlist, wanted.song, 0, 0});
    return pick;
}

Pick PickRequestedSong(const AppState& app, const SongChoice& wanted) {
    const Pick pick = PickSong(app, wanted);
    if (pick.result == Selection::kItem) return pick;
    const bool knowsPlaylist =
        wanted.playlist >= 0 && static_cast<size_t>(wanted.playlist) < app.library.playlists.size();
    PrintLine(knowsPlaylist ? "Error: Invalid song index." : "Error: Invalid playlist index.");
    return pick;
}

// The item of the record, if it is still known.
Pick PickRecord(const AppState& app, const HistoryRecord& record) {
    if (record.type != kInternetRadio) return PickSong(app, {record.playlist, record.song, 0, 0});
    const std::vector<InternetStation>& stations = app.radio.stations;
    const auto found = std::find_if(stations.begin(), stations.end(),
                                    [&](const InternetStation& station) { return station.url == record.path; });
    return PickStation(app, found == stations.end() ? -1 : static_cast<int32_t>(found - stations.begin()));
}

bool MayPlay(const PickerState& picker, const PlayItem& item) {
    return picker.unavailable.MayPlay(item.address, UnavailableSongs::Failed::kExcluded);
}

// The next station after that one that has not failed lately.
Pick PickStationAfter(const AppState& app, const PickerState& picker, int32_t station) {
    const auto count = static_cast<int32_t>(app.radio.stations.size());
    for (int32_t step = 1; step <= count; ++step) {
        const Pick pick = PickStation(app, (station + step) % count);
        if (MayPlay(picker, pick.item)) return pick;
    }
    return {};
}

// The first playable song of the queue from that place on. The user has asked for it: it is tried even if it failed
// before.
Pick PickQueued(const AppState& app, const PickerState& picker, std::optional<int32_t> place) {
    const std::optional<int32_t> queue = QueueIn(app.library);
    if (!queue || !place) return {};
    for (int32_t at = *place;; ++at) {
        Pick pick = PickSong(app, {*queue, at, 0, 0});
        if (pick.result != Selection::kItem) return pick;
        pick.queued = at;
        if (picker.unavailable.MayPlay(pick.item.address, UnavailableSongs::Failed::kAllowed)) return pick;
    }
}

// The next playable record from `cursor` on, in the direction of `step`, 1 or -1.
Pick ReplayHistory(const AppState& app, const PickerState& picker, size_t cursor, int step) {
    const SongHistory& history = app.history;
    for (int64_t at = static_cast<int64_t>(cursor) + step; at >= 0 && at < static_cast<int64_t>(history.records.size());
         at += step) {
        Pick pick = PickRecord(app, history.records[static_cast<size_t>(at)]);
        if (pick.result != Selection::kItem || !MayPlay(picker, pick.item)) continue;
        pick.historyCursor = static_cast<size_t>(at);
        pick.replayStep = step;
        return pick;
    }
    return {};
}

}  // namespace

bool HasEarlierSong(const SongHistory& history) {
    return history.cursor > 0;
}

Pick ChooseNextItem(const AppState& app, PickerState& picker, const NextRequest& request) {
    Pick pick;
    switch (request.kind) {
        case NextRequest::kStation:
            pick = PickStation(app, app.selection.currentInternetStation);
            break;
        case NextRequest::kSong:
            pick = PickRequestedSong(app, request.song);
            break;
        case NextRequest::kMusic:
            return SelectMusic(app, picker);
        case NextRequest::kEarlierSong:
            return ReplayHistory(app, picker, app.history.cursor, -1);
        case NextRequest::kNone:
            if (app.selection.previousSongMode) pick = ReplayHistory(app, picker, app.history.cursor, 1);
            if (pick.result != Selection::kItem) pick = PickQueued(app, picker, app.selection.nextQueued);
            break;
    }
    return pick.result == Selection::kItem ? pick : SelectFreely(app, picker);
}

Pick ReplaceItem(const AppState& app, PickerState& picker, const Pick& failed) {
    if (failed.replayStep != 0) {
        const Pick other = ReplayHistory(app, picker, *failed.historyCursor, failed.replayStep);
        if (other.result == Selection::kItem || failed.replayStep < 0) return other;
    }
    if (failed.queued) {
        const Pick other = PickQueued(app, picker, *failed.queued + 1);
        if (other.result == Selection::kItem) return other;
    }
    if (!app.selection.customStationActive && failed.item.kind == PlayItem::Kind::kStation) {
        const Pick other = PickStationAfter(app, picker, failed.item.place.playlist);
        return other.result == Selection::kItem ? other : SelectMusic(app, picker);
    }
    return SelectFreely(app, picker);
}

}  // namespace hullrider
