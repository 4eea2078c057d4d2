#include "playback/next_up.h"

#include <utility>

#include "playback/sound_fonts.h"
#include "playback/station_play.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

StationRequest StationRequestFor(const AppState& app, const PickerState& picker, const Pick& pick) {
    const InternetStation& station = app.radio.stations[static_cast<size_t>(pick.item.place.playlist)];
    return {.name = station.name,
            .url = station.url,
            .tags = station.tags,
            .mayBeRepaired = MayBeRepaired(picker, station.name),
            .intoMain = app.playback.nextSlotActive,
            .network = picker.network};
}

OpenRequest RequestFor(const AppState& app, PickerState& picker, const Pick& pick) {
    OpenRequest request;
    request.item = pick.item;
    request.durations = DurationsFor(app, pick);
    if (!pick.item.hasLength) {
        request.stationWindow =
            ChooseStationWindow(app.settings, app.selection.customStationActive, picker.windowRandom);
    }
    if (pick.item.kind == PlayItem::Kind::kStation) request.station = StationRequestFor(app, picker, pick);
    request.windowSeed = picker.windowRandom.Seed();
    request.intoMain = app.playback.nextSlotActive;
    request.slotFont = IdleSlotFont(app.playback, app.soundFonts);
    return request;
}

}  // namespace

PlayDurations DurationsFor(const AppState& app, const Pick& pick) {
    PlayDurations durations = ChooseDurations(app.settings, app.playback.demonstration);
    if (pick.replayStep != 0 || pick.queued) durations.maxSec = 0.0;
    return durations;
}

std::chrono::milliseconds PatienceWith(const PlayItem& item) {
    return item.kind == PlayItem::Kind::kStation ? kPatienceWithStation : kPatience;
}

bool OpenNext(AppState& app, PickerState& picker, const Wish& wish, const Pick& pick) {
    DropNext(app.playback);
    OpenRequest open = RequestFor(app, picker, pick);
    // A song that cuts others off does not count toward the SoundFont change.
    const bool counts = pick.item.type == kMidi && !app.playback.fade->fadeInProgress;
    const int32_t newFont = counts ? DrawSoundFont(app, picker.fontRandom) : -1;
    if (newFont >= 0) open.newFontFile = app.soundFonts.soundFontFiles[static_cast<size_t>(newFont)];
    const std::string fontFile = open.newFontFile;
    std::shared_ptr<Opening> opening = Opening::Begin(std::move(open));
    if (opening == nullptr) return false;
    const PlayTime patientUntil = PlayNow() + PatienceWith(pick.item);
    NextUp next{wish, pick, BasisOf(app), std::move(opening), newFont, fontFile, patientUntil};
    app.playback.next = std::make_shared<NextUp>(std::move(next));
    if (wish.isUrgent) app.playback.next->opening->Hurry();
    return true;
}

void MakeUrgent(NextUp& next, bool skips) {
    next.wish.isUrgent = true;
    next.wish.skips = skips;
    next.patientUntil = PlayNow() + PatienceWith(next.pick.item);
    next.opening->Hurry();
}

bool StillFits(const AppState& app, const NextUp& next) {
    return next.basis == BasisOf(app);
}

void DropNext(PlaybackState& playback) {
    if (playback.next == nullptr) return;
    playback.next->opening->Abandon();
    playback.next.reset();
}

}  // namespace hullrider
