// Opens an item on a worker, because a drive or a network may be slow: creates the stream, positions it where it
// sounds, and decodes its first seconds silently. UI thread, unless a function says otherwise.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/play_clock.h"
#include "platform/worker.h"
#include "playback/play_window.h"
#include "playback/station_opening.h"
#include "state/playback_state.h"

namespace hullrider {

struct OpenRequest {
    PlayItem item;
    PlayDurations durations;
    PlayWindow stationWindow;  // for an item without a length
    StationRequest station;    // for a station
    uint64_t windowSeed = 0;   // for the draw of a song's window
    bool intoMain = true;      // which of the two slots will hold it
    uint32_t slotFont = 0;     // audio handle of the slot's font, 0: none
    std::string newFontFile;   // a font to load instead of the slot's; empty: none
};

enum class OpenResult {
    kReady,
    kAway,    // the file is missing; `awayFolder` is the topmost missing folder above it, if any
    kBroken,  // it cannot be played; a line on the console has said why
    kSilent,  // silent from start to end
};

struct Opened {
    OpenResult result = OpenResult::kBroken;
    StreamSlot handle = 0;
    std::string title;       // from the file's tags, or its name
    double lengthSec = 0.0;  // 0: unknown
    PlayWindow window;
    std::optional<float> rms;  // loudness of its first seconds, on the scale of BASS_ChannelGetLevel
    uint32_t newFont = 0;      // audio handle; 0: none requested, or not usable
    std::string awayFolder;
    std::string repairedUrl;   // of a station, to be kept; empty: not repaired
    bool wasSearched = false;  // the directory was asked for the station
    StreamNowPlaying nowPlaying;
};

class Opening {
public:
    // Starts the worker, which posts when it is done. Null when the system has no thread left.
    static std::shared_ptr<Opening> Begin(OpenRequest request);

    // The number of running workers, including abandoned ones.
    static int UnderWay();

    bool IsDone() const { return state_ == State::kDone; }
    const Opened& Result() const { return opened_; }  // valid when done
    std::chrono::milliseconds Took() const { return took_; }

    // The item is wanted now: skip the work that only measures its loudness.
    void Hurry() { isHurried_ = true; }

    // Hands the stream and the font over to the caller; otherwise Abandon frees them.
    void Release() { isReleased_ = true; }
    // Gives the item up: frees what it has opened or is still opening.
    void Abandon();

private:
    enum class State { kOpening, kDone, kAbandoned };

    void Run(const std::stop_token& stop);
    void Free();
    bool OpenSong();
    bool OpenRadio(const std::stop_token& stop);
    bool Settle();
    void AttachFont();
    void ChooseWindow();

    Worker worker_;
    OpenRequest request_;
    PlayTime begunAt_;
    std::atomic<State> state_{State::kOpening};
    std::atomic<bool> isHurried_{false};
    std::atomic<StreamSlot> handle_{0};
    bool isReleased_ = false;
    // Written by the worker before the state becomes kDone.
    Opened opened_;
    std::chrono::milliseconds took_{0};
};

}  // namespace hullrider
