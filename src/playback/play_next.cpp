#include "playback/play_next.h"

#include <algorithm>
#include <string>
#include <utility>

#include "audio/ahead.h"
#include "audio/bass.h"
#include "library/statistics.h"
#include "platform/console.h"
#include "platform/paths.h"
#include "playback/cross_fade.h"
#include "playback/listening.h"
#include "playback/next_item.h"
#include "playback/next_up.h"
#include "playback/sound_fonts.h"
#include "playback/station_play.h"
#include "playback/stream_loudness.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

using std::chrono::milliseconds;

// Songs that end at once, or cannot be played, must not keep the player busy.
constexpr milliseconds kRetryAfter{15000};
constexpr milliseconds kPrepareAgainAfter{2000};
constexpr double kStationGoesOnSec = 30.0;
constexpr milliseconds kStationAgainAfter{10000};  // when none answers

// The next item is prepared this long before it is needed.
constexpr double kPrepareLeadSec = 12.0;

// An item that is silent for this long is over; the next one is prepared earlier.
constexpr double kLongestSilenceSec = 1.5;
constexpr double kSuspiciousSilenceSec = 0.5;

constexpr int kMostOpenings = 8;  // a lost drive may hold each worker for long

constexpr milliseconds kShortestPoll{10}, kLongestPoll{250};

PlaybackTrouble TroubleWith(const AppState& app, Selection failed) {
    if (failed == Selection::kRefused) return PlaybackTrouble::kNothingWanted;
    return app.library.typedSongCount > 0 ? PlaybackTrouble::kNothingPlayable : PlaybackTrouble::kNoMusic;
}

// Repeating the song is better than silence.
void PlayOldItemRound(const PlaybackState& playback) {
    const StreamSlot handle = CurrentHandle(playback);
    if (handle == 0 || !playback.item.hasLength) return;
    BASS_ChannelFlags(handle, BASS_SAMPLE_LOOP, BASS_SAMPLE_LOOP);
    if (BASS_ChannelIsActive(handle) == BASS_ACTIVE_STOPPED) BASS_ChannelPlay(handle, true);
}

// Nothing can be picked although an item is wanted.
void GiveUp(AppState& app, Selection result, const NextRequest& request) {
    PlaybackState& playback = app.playback;
    if (request.kind == NextRequest::kEarlierSong && result == Selection::kNothing) return;
    // The current song was removed with the rest of the library, or was queued: it must not repeat forever.
    const bool isGone = result == Selection::kNothing && app.library.typedSongCount == 0 && !IsStationPlaying(playback);
    if (result == Selection::kRefused || isGone) {
        EndListening(app);
        CutStreamsBut(playback, 0);
    } else {
        PlayOldItemRound(playback);
    }
    TellTrouble(playback, TroubleWith(app, result));
}

// --- Picking and opening.

bool IsWanted(const PlaybackState& playback) {
    return playback.next != nullptr && playback.next->wish.isUrgent;
}

// False when there is nothing to open; then nothing is next.
bool Pursue(AppState& app, PickerState& picker, const Wish& wish, const Pick& pick) {
    if (wish.isForStation && pick.item.kind != PlayItem::Kind::kStation) {
        DropNext(app.playback);
        app.playback.prepareFrom = PlayNow() + kStationAgainAfter;
        return false;
    }
    if (pick.result == Selection::kItem && OpenNext(app, picker, wish, pick)) return true;
    DropNext(app.playback);
    app.playback.prepareFrom = PlayNow() + kPrepareAgainAfter;
    if (wish.isUrgent) GiveUp(app, pick.result, wish.request);
    return false;
}

// A drive that was away may be back.
Pick ChooseUrgently(const AppState& app, PickerState& picker, const NextRequest& request) {
    Pick pick = ChooseNextItem(app, picker, request);
    const bool looksAgain = pick.result == Selection::kNothing && request.kind != NextRequest::kEarlierSong;
    if (looksAgain && picker.unavailable.LookAgain()) pick = ChooseNextItem(app, picker, request);
    return pick;
}

void NoteFailure(PickerState& picker, const PlayItem& item, const Opened& opened) {
    if (item.kind == PlayItem::Kind::kStation) {
        picker.unavailable.NoteMissingFile(item.address);  // it may be back in a minute
    } else if (opened.result != OpenResult::kAway) {
        picker.unavailable.NoteBroken(item.address);
        PrintErrorLine("Cannot play " + item.address);
    } else if (opened.awayFolder.empty()) {
        picker.unavailable.NoteMissingFile(item.address);
    } else {
        picker.unavailable.NoteAwayFolder(opened.awayFolder);
    }
}

// False when there is no replacement.
bool ReplaceNext(AppState& app, PickerState& picker) {
    const NextUp failed = *app.playback.next;
    NoteFailure(picker, failed.pick.item, failed.opening->Result());
    KeepRepair(app, picker, failed.pick.item.title, failed.opening->Result());
    return Pursue(app, picker, failed.wish, ReplaceItem(app, picker, failed.pick));
}

// Leaves a drive or station that does not answer alone for a while, if there is anything else to play.
void TryAnother(AppState& app, PickerState& picker) {
    NextUp& slow = *app.playback.next;
    slow.patientUntil = PlayNow() + kPatience;
    if (Opening::UnderWay() >= kMostOpenings) return;
    const PlayItem& item = slow.pick.item;
    if (item.kind == PlayItem::Kind::kStation) {
        picker.unavailable.NoteMissingFile(item.address);
    } else {
        picker.unavailable.NoteAwayFolder(std::string(FolderOf(FolderOf(item.address))));
    }
    const Pick other = ReplaceItem(app, picker, slow.pick);
    const Wish wish = slow.wish;
    if (other.result == Selection::kItem) Pursue(app, picker, wish, other);
}

// --- Starting.

void PrintPlayError(const PlaybackState& playback) {
    const bool isTracker = playback.currentType == kTracker;
    const std::string slot = (isTracker ? "trackerStream" : "musicStream");
    const std::string code = std::to_string(BASS_ErrorGetCode());
    if (isTracker) PrintErrorLine("Error playing trackerStream (HMUSIC). Error code: " + code);
    PrintErrorLine("Error playing " + slot + (playback.nextSlotActive ? "" : "Next") + ": " + code);
}

void PrintWhatPlays(const PlaybackState& playback) {
    if (playback.item.kind == PlayItem::Kind::kStation) return PrintLine("Playing: " + playback.item.title);
    PrintLine("Playing: " + playback.item.secondLine + " / " + playback.item.title + " [" +
              FormatTime(playback.startSec) + " - " + FormatTime(playback.endSec) + " of " +
              FormatTime(playback.songLengthSec) + "]");
}

void LeaveHistoryAtItsEnd(AppState& app) {
    if (app.history.cursor + 1 >= app.history.records.size()) app.selection.previousSongMode = false;
}

// Puts the opened item in the old one's place, silent and not started yet.
void TakeOver(AppState& app, PickerState& picker, NextUp& next) {
    PlaybackState& playback = app.playback;
    const Opened& opened = next.opening->Result();
    next.opening->Release();
    if (next.pick.item.kind == PlayItem::Kind::kStation) {
        KeepRepair(app, picker, next.pick.item.title, opened);
        if (!opened.repairedUrl.empty()) next.pick.item.address = opened.repairedUrl;
        app.radio.nowPlaying = opened.nowPlaying;
    }
    next.pick.item.title = opened.title;
    PutIntoIdleSlot(playback, next.pick.item.type, opened.handle);
    TakeEffect(app, next.pick);
    playback.songLengthSec = opened.lengthSec;
    playback.startSec = opened.window.startSec;
    playback.endSec = opened.window.endSec;
    playback.slowestOpening = std::max(playback.slowestOpening * 9 / 10, next.opening->Took());
    playback.trouble = PlaybackTrouble::kNone;
    playback.stalledSince.reset();
}

void CountForSoundFont(AppState& app, const NextUp& next, const OldItem& old) {
    if (next.pick.item.type != kMidi || (old.isCutOff && next.newFont < 0)) return;
    ApplySoundFontRule(app, next.newFont, next.newFontFile, next.opening->Result().newFont);
}

void StartItem(AppState& app, PickerState& picker, NextUp& next) {
    PlaybackState& playback = app.playback;
    const Opened& opened = next.opening->Result();
    const OldItem old = LookAtOldItem(playback);
    const int32_t fadeMs = FadeMsFor(app.settings.FADE_DURATION_MS, opened.window, old);
    EndListening(app);
    LetOldItemGo(playback, old, fadeMs);
    TakeOver(app, picker, next);
    if (!BASS_ChannelPlay(opened.handle, false)) PrintPlayError(playback);
    if (next.wish.skips) CountSkip(app.statistics);
    RestartLoudness(playback, opened.handle);
    FadeInToTarget(app, opened.handle, opened.rms, fadeMs);
    FreeOldItem(playback, old, opened.handle, fadeMs);
    CountForSoundFont(app, next, old);
    PrintWhatPlays(playback);
    LeaveHistoryAtItsEnd(app);
    playback.previousType = playback.currentType;
    playback.nextSlotActive = !playback.nextSlotActive;
    playback.fade->nextSlotActive = playback.nextSlotActive;
    picker.unavailable.NotePlayed(playback.item.address);
    BeginListening(app);
}

// Starts the wanted item if it is open. True when it was started.
bool TakeWhatIsOpen(AppState& app, PickerState& picker) {
    while (app.playback.next != nullptr && app.playback.next->opening->IsDone()) {
        const std::shared_ptr<NextUp> next = app.playback.next;
        if (next->opening->Result().result != OpenResult::kReady) {
            if (!ReplaceNext(app, picker)) return false;
            continue;
        }
        if (!next->wish.isUrgent) return false;
        StartItem(app, picker, *next);
        app.playback.next.reset();
        return true;
    }
    return false;
}

// --- Conditions for the poll.

double SecondsLeft(const PlaybackState& playback) {
    return playback.endSec - PositionSec(CurrentHandle(playback));
}

bool IsTimeToPrepare(const PlaybackState& playback) {
    const StreamSlot handle = CurrentHandle(playback);
    if (playback.next != nullptr || handle == 0 || PlayNow() < playback.prepareFrom) return false;
    if (IsStreamInDanger(playback)) return true;
    if (BASS_ChannelIsActive(handle) != BASS_ACTIVE_PLAYING) return false;
    const double leadSec =
        std::max(kPrepareLeadSec, static_cast<double>(playback.slowestOpening.count()) * 2.0 / 1000.0);
    return SecondsLeft(playback) <= leadSec || QuietSec(handle) >= kSuspiciousSilenceSec;
}

bool HasFallenSilent(const PlaybackState& playback) {
    if (HasRunDry(playback)) return true;
    return playback.item.hasLength && PlayNow() - playback.lastAttempt >= kShortestPlay &&
           QuietSec(CurrentHandle(playback)) >= kLongestSilenceSec;
}

void PrepareInTime(AppState& app, PickerState& picker) {
    const bool waits = WaitsForStation(app) && app.playback.next == nullptr && PlayNow() >= app.playback.prepareFrom;
    if (!waits && !IsTimeToPrepare(app.playback)) return;
    Wish wish;
    wish.isForStation = waits;
    Pursue(app, picker, wish, ChooseNextItem(app, picker, {}));
}

// --- Stations.

void WatchStation(AppState& app) {
    PlaybackState& playback = app.playback;
    NoteStall(playback);
    if (StaysWithStation(app) && SecondsLeft(playback) <= kPrepareLeadSec) playback.endSec += kStationGoesOnSec;
    const NextUp* const next = playback.next.get();
    const bool isAnswered = next != nullptr && next->wish.isForStation && next->opening->IsDone();
    if (isAnswered && WaitsForStation(app) && StillFits(app, *next)) MakeUrgent(*playback.next, false);
}

bool IsSongNext(const PlaybackState& playback) {
    return playback.next != nullptr && playback.next->pick.item.kind == PlayItem::Kind::kSong;
}

// Another station could take long to answer: a song comes first, unless something is open already.
bool LeaveStation(AppState& app, PickerState& picker) {
    picker.unavailable.NoteMissingFile(app.playback.item.address);
    const NextUp* const next = app.playback.next.get();
    const bool isOpen = next != nullptr && next->opening->IsDone();
    return PlayNext(app, picker, {isOpen ? NextRequest::kNone : NextRequest::kMusic, {}});
}

bool NeedsItSoon(const PlaybackState& playback) {
    return IsWanted(playback) || SecondsLeft(playback) * 1000.0 < static_cast<double>(kPatience.count());
}

}  // namespace

const char* TroubleText(PlaybackTrouble trouble) {
    switch (trouble) {
        case PlaybackTrouble::kNone:
            return "";
        case PlaybackTrouble::kLookingForMusic:
            return "Looking for music";
        case PlaybackTrouble::kNoMusic:
            return "No music found. File > Select Local Folders";
        case PlaybackTrouble::kNothingWanted:
            return "No kind of music is wanted. Settings > Radio";
        case PlaybackTrouble::kNothingPlayable:
            break;
    }
    return "None of the songs can be played";
}

void TellTrouble(PlaybackState& playback, PlaybackTrouble trouble) {
    if (playback.trouble == trouble) return;
    playback.trouble = trouble;
    PrintLine(TroubleText(trouble));
}

bool PlayNext(AppState& app, PickerState& picker) {
    return PlayNext(app, picker, {});
}

bool PlayNext(AppState& app, PickerState& picker, const NextRequest& request) {
    PlaybackState& playback = app.playback;
    const bool skips = CurrentHandle(playback) != 0 && !IsSongOver(playback) && !HasFallenSilent(playback);
    playback.lastAttempt = PlayNow();
    const NextUp* const next = playback.next.get();
    const bool isPrepared =
        next != nullptr && !IsWanted(playback) && request.kind == NextRequest::kNone && StillFits(app, *next);
    if (isPrepared) {
        MakeUrgent(*playback.next, skips);
    } else {
        picker.unavailable.BeginAttempt();
        if (!Pursue(app, picker, {request, true, skips}, ChooseUrgently(app, picker, request))) return false;
    }
    return TakeWhatIsOpen(app, picker);
}

bool PollPlayback(AppState& app, PickerState& picker) {
    PlaybackState& playback = app.playback;
    WatchStation(app);
    CorrectVolumeOnceHeard(playback);
    CountPlayOnceHeard(app);
    if (TakeWhatIsOpen(app, picker)) return true;
    if (HasRunDry(playback) && !IsSongNext(playback)) return LeaveStation(app, picker);
    if (IsWanted(playback)) {
        if (PlayNow() >= playback.next->patientUntil) TryAnother(app, picker);
        return TakeWhatIsOpen(app, picker);
    }
    if (IsSongOver(playback) || HasFallenSilent(playback)) return PlayNext(app, picker);
    if (playback.next != nullptr && !StillFits(app, *playback.next)) DropNext(playback);
    PrepareInTime(app, picker);
    if (playback.next != nullptr && NeedsItSoon(playback) && PlayNow() >= playback.next->patientUntil &&
        !playback.next->opening->IsDone()) {
        TryAnother(app, picker);
    }
    return false;
}

milliseconds UntilDue(const PlaybackState& playback) {
    const StreamSlot handle = CurrentHandle(playback);
    const bool endsByItself = handle != 0 && !IsWanted(playback) && playback.trouble == PlaybackTrouble::kNone &&
                              BASS_ChannelIsActive(handle) == BASS_ACTIVE_PLAYING;
    if (!endsByItself) return kLongestPoll;
    const double leftMs = std::clamp(SecondsLeft(playback) * 1000.0, 0.0, 1000.0);
    return std::clamp(milliseconds(static_cast<int>(leftMs) + 1), kShortestPoll, kLongestPoll);
}

bool IsSongOver(const PlaybackState& playback) {
    const auto sinceAttempt = PlayNow() - playback.lastAttempt;
    const StreamSlot handle = CurrentHandle(playback);
    if (handle == 0) return sinceAttempt >= kRetryAfter;
    const uint32_t active = BASS_ChannelIsActive(handle);
    if (active == BASS_ACTIVE_PAUSED) return false;
    const bool ended = active == BASS_ACTIVE_STOPPED || PositionSec(handle) >= playback.endSec;
    return ended && sinceAttempt >= (playback.trouble == PlaybackTrouble::kNone ? kShortestPlay : kRetryAfter);
}

}  // namespace hullrider
