// Opens an item on a worker, because a drive or a network may take its time: the stream is created, positioned where it
// sounds, and its first seconds are decoded, silently. UI thread, unless a function says otherwise.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/play_clock.h"
#include "platform/worker.h"
#include "playback/play_window.h"
#include "state/playback_state.h"

namespace hullrider {

struct OpenRequest {
    PlayItem item;
    PlayDurations durations;
    PlayWindow stationWindow;  // of what has no length
    uint64_t windowSeed = 0;   // for the draw of a song's window
    bool intoMain = true;      // which of the two slots it will be given
    uint32_t slotFont = 0;     // audio handle of the slot's font, 0: none
    std::string newFontFile;   // of a font to load for the slot instead; empty: none
};

enum class OpenResult {
    kReady,
    kAway,    // the file is not there: `awayFolder` is the topmost folder that is missing with it, if one is
    kBroken,  // it cannot be played; a line has said why
    kSilent,  // all through
};

struct Opened {
    OpenResult result = OpenResult::kBroken;
    StreamSlot handle = 0;
    std::string title;       // of the file's own tags, or of its name
    double lengthSec = 0.0;  // 0: unknown
    PlayWindow window;
    std::optional<float> rms;  // the loudness of its first seconds, as BASS_ChannelGetLevel gives levels
    uint32_t newFont = 0;      // audio handle; 0: none was wanted, or it could not be used
    std::string awayFolder;
};

class Opening {
public:
    // Starts the worker, which posts something when it is done. Null when the system has no thread left.
    static std::shared_ptr<Opening> Begin(OpenRequest request);

    // How many workers are at it, abandoned ones included.
    static int UnderWay();

    bool IsDone() const { return state_ == State::kDone; }
    const Opened& Result() const { return opened_; }  // once it is done
    PlayTime BegunAt() const { return begunAt_; }
    std::chrono::milliseconds Took() const { return took_; }

    // It is wanted now: what only serves its loudness is left out.
    void Hurry() { isHurried_ = true; }

    // The stream and the font are the caller's from now on; without it they are freed by Abandon.
    void Release() { isReleased_ = true; }
    // Nobody wants it any more: what it has opened, or still opens, is freed.
    void Abandon();

private:
    enum class State { kOpening, kDone, kAbandoned };

    void Run();
    void Free();
    bool OpenStream();
    void AttachFont();
    void ChooseWindow();

    Worker worker_;
    OpenRequest request_;
    PlayTime begunAt_;
    std::atomic<State> state_{State::kOpening};
    std::atomic<bool> isHurried_{false};
    std::atomic<StreamSlot> handle_{0};
    bool isReleased_ = false;
    // Written by the worker before it is done.
    Opened opened_;
    std::chrono::milliseconds took_{0};
};

}  // namespace hullrider
