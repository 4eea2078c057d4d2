#include "playback/play_next.h"

#include <algorithm>

#include "audio/bass.h"
#include "library/song_counts.h"
#include "platform/console.h"
#include "platform/paths.h"
#include "playback/fade_out.h"
#include "playback/play_window.h"
#include "playback/song_selection.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"

namespace hullrider {

namespace {

using Clock = std::chrono::steady_clock;

// A library of songs that end at once, or of none that can be played, must not keep the player busy.
constexpr std::chrono::milliseconds kShortestTurn{1000};
constexpr std::chrono::milliseconds kRetryAfter{15000};
constexpr int kMostSongsTried = 20;

// Streams loop, so a window that ends with the song must be seen to end just before.
constexpr double kBeforeLoopSec = 0.2;

struct LoadedSong {
    StreamSlot handle = 0;
    const Playlist* playlist = nullptr;
    const Song* song = nullptr;
    SongChoice choice;
};

// Says once why it is silent, not with every attempt.
void TellTrouble(PlaybackState& playback, PlaybackTrouble trouble) {
    if (playback.trouble == trouble) return;
    playback.trouble = trouble;
    PrintLine(TroubleText(trouble));
}

// Draws and loads until a song can be played. An empty handle says that none could, and `trouble` why.
LoadedSong LoadSomeSong(AppState& app, Random& random) {
    PlaybackState& playback = app.playback;
    LoadedSong loaded;
    for (int tried = 0; tried < kMostSongsTried; ++tried) {
        if (!SelectNextSong(app.library, random, loaded.choice)) break;
        loaded.playlist = &app.library.playlists[loaded.choice.playlist];
        loaded.song = &loaded.playlist->songs[loaded.choice.song];
        loaded.handle = loaded.song->musicType == kTracker
                            ? LoadTrackerStream(playback, app.library, loaded.choice)
                            : LoadMusicStream(playback, app.soundFonts, app.library, loaded.choice);
        if (loaded.handle != 0) return loaded;
        PrintErrorLine("Cannot play " + loaded.song->songPath);
    }
    const bool anySong = SongCountOf(app.library) > 0;
    TellTrouble(playback, anySong ? PlaybackTrouble::kNothingPlayable : PlaybackTrouble::kNoMusic);
    return {};
}

void StartSilentInWindow(PlaybackState& playback, const LoadedSong& loaded, const Settings& settings, Random& random) {
    const StreamSlot handle = loaded.handle;
    playback.songLengthSec = LengthSec(handle);
    const PlayDurations durations = ChooseDurations(settings, playback.demonstration);
    const PlayWindow window = ChoosePlayWindow(playback.songLengthSec, loaded.song->musicType, durations, random);
    // Before it starts, so that nothing is decoded that will not be heard. A song that cannot be positioned plays as
    // long as was drawn, from its start.
    const bool positioned =
        window.startSec > 0.0 &&
        BASS_ChannelSetPosition(handle, BASS_ChannelSeconds2Bytes(handle, window.startSec), BASS_POS_BYTE);
    playback.startSec = positioned ? window.startSec : 0.0;
    playback.endSec = playback.startSec + (window.endSec - window.startSec);
    if (!BASS_ChannelPlay(handle, false)) {
        const std::string slot = loaded.song->musicType == kTracker ? "trackerStream" : "musicStream";
        PrintErrorLine("Error playing " + slot + (playback.nextSlotActive ? "" : "Next") + ": " +
                       std::to_string(BASS_ErrorGetCode()));
    }
}

// Lets the old song slide away, or cuts it off when another fade is still under way.
void LetOldSongGo(PlaybackState& playback, StreamSlot old, StreamSlot loaded, int32_t fadeMs) {
    if (playback.fade->fadeInProgress) {
        CutStreamsBut(playback, loaded);
        ForgetFade(*playback.fade);
    } else if (old != 0) {
        BASS_ChannelSlideAttribute(old, BASS_ATTRIB_VOL, 0.0F, static_cast<uint32_t>(fadeMs));
        FadeOutAndFreeStream(playback.fade, old, fadeMs);
    }
}

void NoteWhatPlays(PlaybackState& playback, const LoadedSong& loaded) {
    const std::u8string title = PathFromUtf8(loaded.song->songPath).stem().u8string();
    playback.previousType = playback.firstPick ? loaded.song->musicType : playback.currentType;
    playback.firstPick = false;
    playback.currentType = loaded.song->musicType;
    playback.currentPlaylist = loaded.choice.playlist;
    playback.currentSongInPlaylist = loaded.choice.song;
    playback.currentAlbum = loaded.playlist->albumName;
    playback.currentTitle.assign(title.begin(), title.end());
    playback.trouble = PlaybackTrouble::kNone;
    PrintLine("Playing: " + playback.currentAlbum + " / " + playback.currentTitle + " [" +
              FormatTime(playback.startSec) + " - " + FormatTime(playback.endSec) + " of " +
              FormatTime(playback.songLengthSec) + "]");
}

}  // namespace

const char* TroubleText(PlaybackTrouble trouble) {
    switch (trouble) {
        case PlaybackTrouble::kNone:
            return "";
        case PlaybackTrouble::kNoMusic:
            return "No music found. File > Select Local Folders";
        case PlaybackTrouble::kNothingPlayable:
            break;
    }
    return "None of the songs can be played";
}

bool PlayNext(AppState& app, Random& random) {
    PlaybackState& playback = app.playback;
    playback.lastAttempt = Clock::now();
    const LoadedSong loaded = LoadSomeSong(app, random);
    if (loaded.handle == 0) return false;
    const StreamSlot old = CurrentHandle(playback);
    const int32_t fadeMs = std::max(app.settings.FADE_DURATION_MS, 0);
    LetOldSongGo(playback, old, loaded.handle, fadeMs);
    StartSilentInWindow(playback, loaded, app.settings, random);
    BASS_ChannelSlideAttribute(loaded.handle, BASS_ATTRIB_VOL, app.settings.volumeLevel, static_cast<uint32_t>(fadeMs));
    NoteWhatPlays(playback, loaded);
    playback.nextSlotActive = !playback.nextSlotActive;
    return true;
}

bool IsSongOver(const PlaybackState& playback) {
    const auto sinceAttempt = Clock::now() - playback.lastAttempt;
    const StreamSlot handle = CurrentHandle(playback);
    if (handle == 0) return sinceAttempt >= kRetryAfter;
    const uint32_t active = BASS_ChannelIsActive(handle);
    if (active == BASS_ACTIVE_PAUSED) return false;
    // A file that breaks off is shorter than it said, and begins again where it broke off.
    const double positionSec = PositionSec(handle);
    const double endSec = std::min(playback.endSec, LengthSec(handle) - kBeforeLoopSec);
    const bool ended = active == BASS_ACTIVE_STOPPED || positionSec >= endSec || positionSec < playback.startSec - 1.0;
    return ended && sinceAttempt >= (playback.trouble == PlaybackTrouble::kNone ? kShortestTurn : kRetryAfter);
}

void TogglePause(PlaybackState& playback) {
    const StreamSlot handle = CurrentHandle(playback);
    if (handle == 0) return;
    if (BASS_ChannelIsActive(handle) == BASS_ACTIVE_PAUSED) {
        BASS_ChannelPlay(handle, false);
    } else {
        BASS_ChannelPause(handle);
    }
}

}  // namespace hullrider
