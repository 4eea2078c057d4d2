// A channel's volume between callers, who set it from any thread, and the callback, which applies it. Orders that
// arrive between two blocks are combined: "set, then slide" is a slide from the set value.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>

#include "audio/gain_line.h"
#include "audio/posted.h"

namespace hullrider {

class Volume {
public:
    explicit Volume(uint32_t mixRate);

    // Callers. Both end a running slide. `value` is finite and not negative; 1.0 leaves the data unchanged.
    void Set(float value);
    void SlideTo(float target, uint32_t timeMs);  // with 0 ms as Set
    float Get() const;
    bool Sliding() const;

    // Callback: carries out orders, then mixes `count` frames into the first of `blockFrames` places of `mix`, and lets
    // the time of the whole block pass. `sounding`: the channel was audible up to here, so a hard set is smoothed.
    void MixInto(const float* frames, size_t count, float* mix, size_t blockFrames, bool sounding);
    // Callback: the gain of the last frame mixed.
    float LastGain() const { return lastGain_; }
    // Callback: a slide is running.
    bool IsMoving() const { return line_.Sliding(); }

private:
    struct Order {
        bool jumps = false, slides = false;
        float jumpTo = 1.0f, slideTo = 1.0f;
        uint32_t timeMs = 0;
    };
    // What the callback last reported, packed into one word so that the parts belong together.
    struct Report {
        float value;
        uint32_t orderNumber;  // of the last order carried out
        bool sliding;
    };
    void Post(const Order& order);
    void Obey(bool sounding);
    void PostReport();
    Report LastReport() const;

    uint32_t mixRate_;

    mutable std::mutex mutex_;  // callers only
    Order order_;               // the latest
    uint32_t number_ = 0;       // its number

    Posted<Order> posted_;
    std::atomic<uint64_t> report_;

    // Callback only.
    GainLine line_;
    float lastGain_ = 1.0f;
    uint32_t obeyed_ = 0;
};

}  // namespace hullrider
