// The peak of a channel over its last 20 to 30 ms. Noted by the callback, asked from any thread.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace hullrider {

struct StereoPeak {
    float left = 0.0f, right = 0.0f;
};

class LevelMeter {
public:
    explicit LevelMeter(uint32_t mixRate) : spanFrames_(mixRate / 100) {}

    // Callback.
    void Note(const float* frames, size_t count);
    void Reset();

    StereoPeak Peak() const;

private:
    void CloseSpan();

    static constexpr size_t kSpans = 3;  // the running one and those before it, 10 ms each
    size_t spanFrames_;
    size_t inSpan_ = 0;  // frames noted in the running span
    size_t running_ = 0;
    std::array<StereoPeak, kSpans> spans_;
    std::atomic<uint64_t> peak_{0};
};

}  // namespace hullrider
