// What plays now and what comes next.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "state/selection_state.h"

namespace hullrider {

using StreamSlot = uint32_t;  // an audio handle, 0: empty

// Why nothing is to be heard, for the panel.
enum class PlaybackTrouble { kNone, kNoMusic, kNothingPlayable, kNothingWanted };

// What was asked for instead of a draw.
struct NextRequest {
    enum Kind { kNone, kSong, kStation, kEarlierSong } kind = kNone;
    SongChoice song;  // for kSong
};

// UI thread and the fade workers, which may outlive everything else and so own it together.
struct FadeState {
    std::atomic<bool> fadeInProgress{false};
    std::atomic<uint32_t> serial{0};  // of the latest fade; the worker of an older one leaves the flag alone
};

struct PlaybackState {
    // UI thread only.
    StreamSlot musicStream = 0, musicStreamNext = 0;
    StreamSlot trackerStream = 0, trackerStreamNext = 0;
    bool nextSlotActive = false;  // which member of each pair is current: true, the Next one
    int32_t currentType = 0;      // MusicType of what plays, or kInternetRadio, and of what played before
    int32_t previousType = 0;
    SongChoice playing;  // what plays, when `currentTitle` is not empty
    NextRequest request;
    std::string currentAlbum;  // of what plays, UTF-8; they survive a rescan
    std::string currentTitle;
    double songLengthSec = 0.0;
    double startSec = 0.0;
    double endSec = 0.0;         // start + play length, in stream time
    bool demonstration = false;  // plays music that the user has not chosen
    PlaybackTrouble trouble = PlaybackTrouble::kNone;
    std::chrono::steady_clock::time_point lastAttempt;  // when play-next last ran
    bool itemIsHeard = false;                           // plays and is not paused: its time is counted
    std::chrono::steady_clock::time_point heardSince;

    std::shared_ptr<FadeState> fade = std::make_shared<FadeState>();
};

// The fonts that MIDI songs are played through. UI thread only.
struct SoundFontState {
    std::vector<std::string> soundFontFiles;  // UTF-8 paths, sorted
    int32_t currentSoundFont = 0;
    uint32_t midiStreamFont = 0;      // audio handle of the font of musicStream, 0: none
    uint32_t midiStreamNextFont = 0;  // and of musicStreamNext
};

}  // namespace hullrider
