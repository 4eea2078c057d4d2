#include "playback/play_next.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "audio/bass.h"
#include "library/song_counts.h"
#include "library/song_history.h"
#include "library/statistics.h"
#include "platform/console.h"
#include "platform/paths.h"
#include "playback/chosen_song.h"
#include "playback/fade_out.h"
#include "playback/listening.h"
#include "playback/loudness.h"
#include "playback/next_item.h"
#include "playback/play_clock.h"
#include "playback/play_window.h"
#include "playback/sound_fonts.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

// A library of songs that end at once, or of none that can be played, must not keep the player busy.
constexpr std::chrono::milliseconds kShortestTurn{1000};
constexpr std::chrono::milliseconds kRetryAfter{15000};
constexpr size_t kMostItemsTried = 100;
constexpr std::chrono::milliseconds kMostTimeToTry{1000};

constexpr uint32_t kReturnMs = 200;  // of the old item, when no new one could be started

// Streams loop, so a window that ends with the song must be seen to end just before.
constexpr int32_t kUnknownLengthSec = 180;  // at least, for a song that does not tell its length
constexpr double kBeforeLoopSec = 0.2;

struct LoadedItem {
    StreamSlot handle = 0;
    SongChoice choice;
    Selection kind = Selection::kNothing;
};

// What must be as it was when no new item could be started.
struct Before {
    StreamSlot handle;
    int32_t currentType, previousType;
    bool radioPlaying, previousSongMode;
    size_t cursor;
    bool cutOff;
    bool isHeard;
};

// Says once why it is silent, not with every attempt.
void TellTrouble(PlaybackState& playback, PlaybackTrouble trouble) {
    if (playback.trouble == trouble) return;
    playback.trouble = trouble;
    PrintLine(TroubleText(trouble));
}

PlaybackTrouble TroubleWith(const AppState& app, Selection failed) {
    if (failed == Selection::kRefused) return PlaybackTrouble::kNothingWanted;
    return SongCountOf(app.library) > 0 ? PlaybackTrouble::kNothingPlayable : PlaybackTrouble::kNoMusic;
}

bool IsChoice(Selection selection) {
    return selection == Selection::kSong || selection == Selection::kStation;
}

void NameFailure(const AppState& app, const LoadedItem& item) {
    if (item.kind == Selection::kSong) PrintErrorLine("Cannot play " + SongOf(app, item.choice).songPath);
}

StreamSlot Load(AppState& app, const LoadedItem& item) {
    if (item.kind == Selection::kSong && SongOf(app, item.choice).musicType == kTracker) {
        return LoadTrackerStream(app.playback, app.library, item.choice);
    }
    return LoadMusicStream(app, item.choice);
}

// Chooses and loads until an item can be played. An empty handle says that none could, and the kind why.
LoadedItem LoadSomeItem(AppState& app, Draws& draws) {
    const auto deadline = std::chrono::steady_clock::now() + kMostTimeToTry;
    std::vector<SongChoice>& failed = app.selection.failedNow;
    failed.clear();
    uint64_t picksBefore = app.history.picks;
    LoadedItem item;
    item.kind = ChooseNextItem(app, draws, item.choice);
    while (IsChoice(item.kind)) {
        item.handle = Load(app, item);
        if (item.handle != 0) break;
        NameFailure(app, item);
        failed.push_back(item.choice);
        if (app.history.picks != picksBefore) ForgetLastPick(app.history);
        if (failed.size() >= kMostItemsTried || std::chrono::steady_clock::now() >= deadline) break;
        picksBefore = app.history.picks;
        item.kind = ReplaceItem(app, draws, item.kind, item.choice);
    }
    failed.clear();
    return item;
}

// --- The old item.

// How long it may take to fall silent: streams loop, and a song that is nearly over would begin again within the fade.
uint32_t FallMs(const Before& before, int32_t fadeMs) {
    const double lengthSec = before.currentType == kInternetRadio ? 0.0 : LengthSec(before.handle);
    if (lengthSec <= 0.0) return static_cast<uint32_t>(fadeMs);
    const double leftMs = std::max((lengthSec - PositionSec(before.handle)) * 1000.0, 0.0);
    return static_cast<uint32_t>(std::min(leftMs, static_cast<double>(fadeMs)));
}

// Begins its fade, or cuts everything off when another fade is still under way.
void LetOldItemGo(PlaybackState& playback, const Before& before, int32_t fadeMs) {
    {
        const std::lock_guard lock(StreamMutex());
        playback.volume->currentHandle = 0;  // no volume worker may slide it up again
    }
    if (before.cutOff) {
        StopAllStreams(playback);
    } else if (before.handle != 0) {
        BASS_ChannelSlideAttribute(before.handle, BASS_ATTRIB_VOL, 0.0F, FallMs(before, fadeMs));
    }
}

void FreeOldItem(PlaybackState& playback, const Before& before, StreamSlot newHandle, int32_t fadeMs) {
    if (before.cutOff) {
        CutStreamsBut(playback, newHandle);
        ForgetFade(*playback.fade);
    } else if (playback.realTimeVolume) {
        FadeOutAndFreeStreamAuto(playback, before.handle, fadeMs);
    } else if (before.handle != 0) {
        FadeOutAndFreeStream(playback.fade, before.handle, fadeMs);
    }
}

// It goes on as if nothing had been tried.
void BringOldItemBack(AppState& app, const Before& before) {
    PlaybackState& playback = app.playback;
    playback.currentType = before.currentType;
    playback.previousType = before.previousType;
    app.selection.radioPlaying = before.radioPlaying;
    app.selection.previousSongMode = before.previousSongMode;
    app.history.cursor = std::min(before.cursor, app.history.records.size());
    if (before.cutOff) ForgetFade(*playback.fade);
    if (before.handle == 0) return;
    playback.volume->currentHandle = before.handle;
    BASS_ChannelSlideAttribute(before.handle, BASS_ATTRIB_VOL, WantedVolume(app), kReturnMs);
    if (!before.isHeard) return;  // it was paused
    if (before.cutOff) BASS_ChannelPlay(before.handle, false);
    ContinueListening(playback);
}

// --- The new item.

PlayWindow ChooseWindow(const AppState& app, const LoadedItem& item, double lengthSec, Random& random) {
    if (item.kind == Selection::kStation) {
        return ChooseStationWindow(app.settings, app.selection.customStationActive, random);
    }
    PlayDurations durations = ChooseDurations(app.settings, app.playback.demonstration);
    if (app.selection.previousSongMode) durations.maxSec = 0.0;  // heard again, it plays whole
    const int32_t musicType = SongOf(app, item.choice).musicType;
    PlayWindow window = ChoosePlayWindow(lengthSec, musicType, durations, random);
    window.endSec = FadeBeginSec(window, lengthSec, musicType, durations);
    return window;
}

void StartSilentInWindow(AppState& app, const LoadedItem& item, Draws& draws) {
    PlaybackState& playback = app.playback;
    const StreamSlot handle = item.handle;
    playback.songLengthSec = LengthSec(handle);
    const PlayWindow window = ChooseWindow(app, item, playback.songLengthSec, draws.window);
    // Before it starts, so that nothing of the song's first seconds is heard. A song that cannot be positioned plays as
    // long as was drawn, from its start.
    const bool positioned =
        window.startSec > 0.0 &&
        BASS_ChannelSetPosition(handle, BASS_ChannelSeconds2Bytes(handle, window.startSec), BASS_POS_BYTE);
    playback.startSec = positioned ? window.startSec : 0.0;
    playback.endSec = playback.startSec + (window.endSec - window.startSec);
    // Of unknown length: until it ends by itself or the longest play time is over.
    if (playback.songLengthSec <= 0.0) playback.endSec = std::max(app.settings.songPlayDurationMax, kUnknownLengthSec);
    if (!BASS_ChannelPlay(handle, false)) {
        const std::string slot = playback.currentType == kTracker ? "trackerStream" : "musicStream";
        PrintErrorLine("Error playing " + slot + (playback.nextSlotActive ? "" : "Next") + ": " +
                       std::to_string(BASS_ErrorGetCode()));
    }
}

void NameWhatPlays(AppState& app, const LoadedItem& item) {
    PlaybackState& playback = app.playback;
    if (item.kind == Selection::kStation) {
        playback.currentAlbum.clear();
        playback.currentTitle = app.radio.stations[static_cast<size_t>(item.choice.playlist)].name;
        return;
    }
    const std::u8string title = PathFromUtf8(SongOf(app, item.choice).songPath).stem().u8string();
    playback.currentAlbum = app.library.playlists[static_cast<size_t>(item.choice.playlist)].albumName;
    playback.currentTitle.assign(title.begin(), title.end());
}

void NoteWhatPlays(AppState& app, const LoadedItem& item) {
    PlaybackState& playback = app.playback;
    playback.playing = item.choice;
    playback.trouble = PlaybackTrouble::kNone;
    NameWhatPlays(app, item);
    PrintLine("Playing: " + playback.currentAlbum + " / " + playback.currentTitle + " [" +
              FormatTime(playback.startSec) + " - " + FormatTime(playback.endSec) + " of " +
              FormatTime(playback.songLengthSec) + "]");
}

void LeaveHistoryAtItsEnd(AppState& app) {
    if (app.history.cursor + 1 >= app.history.records.size()) app.selection.previousSongMode = false;
}

}  // namespace

const char* TroubleText(PlaybackTrouble trouble) {
    switch (trouble) {
        case PlaybackTrouble::kNone:
            return "";
        case PlaybackTrouble::kNoMusic:
            return "No music found. File > Select Local Folders";
        case PlaybackTrouble::kNothingWanted:
            return "No kind of music is wanted. Settings > Radio";
        case PlaybackTrouble::kNothingPlayable:
            break;
    }
    return "None of the songs can be played";
}

bool PlayNext(AppState& app, Draws& draws) {
    PlaybackState& playback = app.playback;
    const StreamSlot old = CurrentHandle(playback);
    const Before before{old,
                        playback.currentType,
                        playback.previousType,
                        app.selection.radioPlaying,
                        app.selection.previousSongMode,
                        app.history.cursor,
                        playback.fade->fadeInProgress,
                        playback.itemIsHeard};
    const bool skipped = old != 0 && !IsSongOver(playback);
    const int32_t fadeMs = std::max(app.settings.FADE_DURATION_MS, 0);
    playback.lastAttempt = PlayNow();
    EndListening(app);
    LetOldItemGo(playback, before, fadeMs);

    const LoadedItem item = LoadSomeItem(app, draws);
    const NextRequest request = std::exchange(playback.request, {});
    if (item.handle == 0) {
        BringOldItemBack(app, before);
        if (request.kind == NextRequest::kEarlierSong && item.kind == Selection::kNothing) return false;
        // What plays has been taken out of the library with everything else: it must not go round for ever.
        const bool isGone = item.kind == Selection::kNothing && SongCountOf(app.library) == 0;
        if (item.kind == Selection::kRefused || isGone) {
            EndListening(app);
            CutStreamsBut(playback, 0);
        }
        TellTrouble(playback, TroubleWith(app, item.kind));
        return false;
    }
    if (skipped) CountSkip(app.statistics);
    StartSilentInWindow(app, item, draws);
    RestartLoudness(playback, item.handle);
    FadeInToTarget(app, item.handle);
    FreeOldItem(playback, before, item.handle, fadeMs);
    if (item.kind == Selection::kSong && playback.currentType == kMidi && !before.cutOff) {
        ++app.soundFonts.songsSinceSoundfontChange;
        ApplySoundFontRule(app, draws.font);
    }
    NoteWhatPlays(app, item);
    LeaveHistoryAtItsEnd(app);
    playback.previousType = playback.currentType;
    playback.nextSlotActive = !playback.nextSlotActive;
    playback.fade->nextSlotActive = playback.nextSlotActive;
    BeginListening(app);
    return true;
}

bool IsSongOver(const PlaybackState& playback) {
    const auto sinceAttempt = PlayNow() - playback.lastAttempt;
    const StreamSlot handle = CurrentHandle(playback);
    if (handle == 0) return sinceAttempt >= kRetryAfter;
    const uint32_t active = BASS_ChannelIsActive(handle);
    if (active == BASS_ACTIVE_PAUSED) return false;
    const double positionSec = PositionSec(handle);
    bool ended = active == BASS_ACTIVE_STOPPED;
    if (playback.currentType == kInternetRadio) {
        ended = ended || positionSec >= playback.endSec;
    } else {
        // A file that breaks off is shorter than it said, and begins again where it broke off.
        const double lengthSec = LengthSec(handle);
        const bool isKnown = lengthSec > 0.0;
        const double endSec = isKnown ? std::min(playback.endSec, lengthSec - kBeforeLoopSec) : playback.endSec;
        const bool loopsWithinATurn =
            isKnown && lengthSec < std::chrono::duration<double>(kShortestTurn).count() + kBeforeLoopSec;
        ended = ended || loopsWithinATurn || positionSec >= endSec || positionSec < playback.startSec - 1.0;
    }
    return ended && sinceAttempt >= (playback.trouble == PlaybackTrouble::kNone ? kShortestTurn : kRetryAfter);
}

}  // namespace hullrider
