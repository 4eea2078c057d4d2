// The last thing before the output: keeps the sum of all channels within full scale. It looks a few milliseconds ahead,
// so that the gain is down when a peak comes, and what is not too loud leaves exactly as it came, only that much later.
// The gain is that of both sides. One thread; allocates only when it is made.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "audio/ring.h"

namespace hullrider {

class Limiter {
public:
    explicit Limiter(uint32_t rate);

    // By how much later a frame leaves than it came.
    size_t DelayFrames() const { return ahead_; }

    // In place. Nothing that leaves is beyond -1.0 to 1.0; what is no number leaves as silence.
    void Run(float* frames, size_t count);

private:
    // The least value of the last so many: candidates in rising order, the oldest first.
    class SlidingLeast {
    public:
        explicit SlidingLeast(size_t span) : span_(span), values_(span), places_(span) {}
        float Next(float value);

    private:
        size_t span_;
        std::vector<float> values_;
        std::vector<uint64_t> places_;
        uint64_t first_ = 0, end_ = 0;  // candidates are numbered on and on
        uint64_t place_ = 0;
    };
    // The mean of the last so many.
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
    float release_;  // part of the way back to go in a frame
    std::vector<float> delay_;
    size_t next_ = 0;  // place in there, in frames
    SlidingLeast least_;
    SlidingMean mean_;
    float gain_ = 1.0f;  // before it is smoothed
    size_t calm_;        // frames in a row in which it was 1
};

}  // namespace hullrider
