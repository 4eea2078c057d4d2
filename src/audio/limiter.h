// The last stage before the output: keeps the sum of all channels within full scale. It looks a few milliseconds ahead,
// so that the gain is reduced before a peak arrives, and sound that is not too loud passes unchanged, only delayed.
// Both sides share one gain. One thread; allocates only at construction.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "audio/ring.h"

namespace hullrider {

class Limiter {
public:
    explicit Limiter(uint32_t rate);

    // The delay from input to output.
    size_t DelayFrames() const { return ahead_; }

    // In place. The output stays within -1.0 to 1.0; NaN becomes silence.
    void Run(float* frames, size_t count);

private:
    // The minimum of the last values: candidates in rising order, oldest first.
    class SlidingLeast {
    public:
        explicit SlidingLeast(size_t span) : span_(span), values_(span), places_(span) {}
        float Next(float value);

    private:
        size_t span_;
        std::vector<float> values_;
        std::vector<uint64_t> places_;
        uint64_t first_ = 0, end_ = 0;  // running numbers of candidates
        uint64_t place_ = 0;
    };
    // The mean of the last values.
    class SlidingMean {
    public:
        explicit SlidingMean(size_t span) : values_(span, 1.0f), sum_(static_cast<double>(span)) {}
        double Next(float value);

    private:
        std::vector<float> values_;
        size_t next_ = 0;
        double sum_;
    };

    void Limit(float* frame);
    void Delay(float* frames, size_t count);
    float NextGain(float peak);

    size_t ahead_, calmAfter_;
    float release_;  // share of the way back to unity per frame
    std::vector<float> delay_;
    size_t next_ = 0;  // position in the delay line, in frames
    SlidingLeast least_;
    SlidingMean mean_;
    float gain_ = 1.0f;  // before smoothing
    size_t calm_;        // frames in a row with a gain of 1
};

}  // namespace hullrider
