// What plays now and what comes next.
#pragma once

#include <atomic>
#include <cstdint>

namespace hullrider {

using StreamSlot = uint32_t;  // an audio handle, 0: empty

// The result of one selection.
struct SongChoice {
    int32_t playlist = 0;  // or the station index
    int32_t song = 0;      // 0 for a station
    int32_t extra = 0;     // the number drawn, for the uniform pick
    int32_t reserved = 0;  // always 0
};

struct PlaybackState {
    // UI thread only.
    StreamSlot musicStream = 0, musicStreamNext = 0;
    StreamSlot trackerStream = 0, trackerStreamNext = 0;
    bool nextSlotActive = false;  // which member of each pair is current: true, the Next one
    int32_t currentType = 0;      // MusicType of what plays, and of what played before
    int32_t previousType = 0;
    bool firstPick = true;
    int32_t currentPlaylist = 0;
    int32_t currentSongInPlaylist = -1;
    double songLengthSec = 0.0;
    double startSec = 0.0;
    double endSec = 0.0;  // start + play length, in stream time
    bool songOverPending = false;
    bool paused = false;

    // UI thread and the fade workers.
    std::atomic<bool> fadeInProgress{false};
};

}  // namespace hullrider
