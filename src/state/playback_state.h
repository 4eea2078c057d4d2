// What plays now and what comes next.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "state/play_item.h"

namespace hullrider {

using StreamSlot = uint32_t;  // audio handle, 0: empty

// Why nothing plays, for the panel.
enum class PlaybackTrouble { kNone, kLookingForMusic, kNoMusic, kNothingPlayable, kNothingWanted };

// Which rule was dropped so that something could be played.
enum class Relaxation { kNone, kHistory, kCategory, kFilter };

struct NextUp;  // playback/next_up.h

// What the user asked for instead of a draw.
struct NextRequest {
    enum Kind {
        kNone,
        kSong,
        kStation,  // the current one
        kEarlierSong,
        kMusic,  // any song, instead of a station that has fallen silent
    } kind = kNone;
    SongChoice song;  // for kSong
};

// Shared by the UI thread and the fade workers, which may outlive everything else.
struct FadeState {
    std::atomic<bool> fadeInProgress{false};
    std::atomic<uint32_t> serial{0};          // of the latest fade; older workers leave the flag alone
    std::atomic<bool> nextSlotActive{false};  // as in PlaybackState
    std::atomic<bool> closed{false};          // the streams are gone: workers do nothing
    std::atomic<bool> paused{false};          // the fade stands still
    std::atomic<int64_t> pausedMs{0};         // length of the latest fade's earlier pauses
};

// The volume and loudness following. Shared by the UI thread and the volume workers, as above. Loudness is the root
// mean square of a stream's two levels, 0 to 32768 each.
struct VolumeState {
    std::atomic<StreamSlot> currentHandle{0};  // the stream that workers measure and correct
    std::atomic<bool> realTimeVolume{false};   // loudness following is on
    std::atomic<float> targetRms{-1.0F};       // the loudness that the user wants; -1: unknown
    std::atomic<float> averageMusicRms{0.0F};  // of the current item's last seconds; 0: not known yet
    std::atomic<float> adjustedVolume{0.0F};   // the volume that the last correction set
    std::atomic<float> volumeLevel{0.0F};      // the user's volume, for what workers print
    std::atomic<bool> levelUnknown{false};     // the current item could not be measured
    std::atomic<bool> muted{false};            // by the user; the volume stays set
    std::atomic<bool> closed{false};
};

enum VolumeMode : int32_t { kNormalVolume = 0, kHighVolume = 1, kLowVolume = 2 };

struct PlaybackState {
    // UI thread only.
    StreamSlot musicStream = 0, musicStreamNext = 0;
    StreamSlot trackerStream = 0, trackerStreamNext = 0;
    bool nextSlotActive = false;  // which member of each pair is current: true, the Next one
    int32_t currentType = 0;      // type code of what plays, and of what played before
    int32_t previousType = 0;
    PlayItem item;                           // what plays, or played last
    Relaxation relaxed = Relaxation::kNone;  // which rule was dropped for it
    std::shared_ptr<NextUp> next;            // null: nothing is prepared
    double songLengthSec = 0.0;
    double startSec = 0.0;
    double endSec = 0.0;         // start + play length, in stream time
    bool demonstration = false;  // plays music that the user did not choose
    PlaybackTrouble trouble = PlaybackTrouble::kNone;
    std::chrono::steady_clock::time_point lastAttempt;  // when play-next last ran
    std::chrono::steady_clock::time_point prepareFrom;  // earliest next attempt after nothing could be prepared
    std::chrono::milliseconds slowestOpening{0};        // recently
    std::optional<std::chrono::steady_clock::time_point> stalledSince;  // a station: nothing arrives
    StreamSlot fadingStream = 0;                                        // the old item's, while the fade is in progress
    std::chrono::steady_clock::time_point fadeEnds;                     // of both streams; and the time left at a pause
    std::chrono::milliseconds fadeLeft{0};
    std::chrono::steady_clock::time_point pausedAt;
    bool itemIsHeard = false;  // playing and not paused: its time counts
    std::chrono::steady_clock::time_point heardSince;
    double heardSec = 0.0;       // of the item, before heardSince
    bool playIsCounted = false;  // it was heard long enough

    int32_t volumeMode = kNormalVolume;
    float savedVolume = -1.0F;  // the normal volume while a preset is on; -1: none
    int32_t levelsTaken = 0;    // for the average loudness, since the item started
    std::chrono::steady_clock::time_point lastLevel;
    // When the volume is due for another correction, because the item began silent.
    std::optional<std::chrono::steady_clock::time_point> correctionDue;

    std::shared_ptr<FadeState> fade = std::make_shared<FadeState>();
    std::shared_ptr<VolumeState> volume = std::make_shared<VolumeState>();
};

// The fonts that MIDI songs are played through. UI thread only.
struct SoundFontState {
    std::vector<std::string> soundFontFiles;  // UTF-8 paths, sorted
    int32_t currentSoundFont = 0;
    int32_t songsSinceSoundfontChange = 0;
    uint32_t midiStreamFont = 0;                             // audio handle of musicStream's font, 0: none
    uint32_t midiStreamNextFont = 0;                         // of musicStreamNext's
    std::string midiStreamFontFile, midiStreamNextFontFile;  // their files
};

}  // namespace hullrider
