// A channel's peak over its last 20 to 30 ms, and how long it has been nearly silent. Written by the callback, read
// from any thread.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace hullrider {

struct StereoPeak {
    float left = 0.0f, right = 0.0f;
};

StereoPeak PeakOf(const float* frames, size_t count);

class LevelMeter {
public:
    explicit LevelMeter(uint32_t mixRate) : spanFrames_(mixRate / 100) {}

    // Callback.
    void Note(const float* frames, size_t count);
    void Reset();

    StereoPeak Peak() const;
    // How long nothing was above kQuiet.
    double QuietSec() const { return quietSpans_.load() * 0.01; }
    static constexpr float kQuiet = 0.001f;  // -60 dBFS

private:
    void CloseSpan();

    static constexpr size_t kSpans = 3;  // the current one and those before it, 10 ms each
    size_t spanFrames_;
    size_t inSpan_ = 0;  // frames noted in the current span
    size_t running_ = 0;
    std::array<StereoPeak, kSpans> spans_;
    std::atomic<uint64_t> peak_{0};
    std::atomic<uint32_t> quietSpans_{0};
};

}  // namespace hullrider
