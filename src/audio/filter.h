// A second-order filter in a channel. Callers change it from any thread; the callback runs it and cross-fades from the
// old filter to the new one.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>

#include "audio/biquad.h"
#include "audio/posted.h"
#include "audio/ring.h"

namespace hullrider {

class Filter {
public:
    // Neutral. `rate` is that of the sound, in Hz.
    explicit Filter(uint32_t rate);

    // Callers. False, with nothing changed, for an invalid shape. `band` is only stored.
    bool Shape(const FilterShape& shape, int band);
    FilterShape Shape() const;
    int Band() const;
    // Before removal: neutral from now on, and never shaped again.
    void Leave();
    bool IsLeaving() const;
    // Neutral and not running, as of the callback's last block.
    bool IsResting() const { return resting_.load(); }

    // Callback. The sound restarts: uses the newest filter at once, without memory.
    void Begin();
    // Callback. Filters stereo frames in place. Costs nothing while neutral.
    void Run(float* frames, size_t count);

private:
    struct History {  // one side's last two samples in and out
        double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
    };
    struct Voice {
        Biquad biquad;
        std::array<History, kStereo> sides;
    };
    bool BeginFade(const float* first);
    void RunFade(float* frames, size_t count);
    void EndFade();

    double rate_;
    size_t fadeFrames_;

    mutable std::mutex mutex_;  // callers only
    FilterShape shape_;
    int band_ = 0;
    bool leaving_ = false;

    Posted<Biquad> order_;
    std::atomic<bool> resting_{true};

    // Callback only.
    Voice voice_, next_;  // the current filter and the one being faded to
    size_t fadeLeft_ = 0;
    uint32_t obeyed_ = 0;  // number of the last order carried out
};

}  // namespace hullrider
