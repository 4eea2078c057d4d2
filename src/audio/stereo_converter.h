// Converts decoded samples of any format, rate and channel layout to interleaved stereo float at the mixing rate, and
// adapts when any of them changes midway. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

struct AVFrame;
struct SwrContext;

namespace hullrider {

class StereoConverter {
public:
    explicit StereoConverter(uint32_t mixRate) : mixRate_(mixRate) {}

    // Prepares for samples like those of `frame`. False when they cannot be converted.
    bool Accept(const AVFrame& frame);

    // Consumes all samples of `frame` and writes up to `maxFrames` frames; the rest is kept. Returns the number of
    // frames written; nothing when the samples cannot be converted.
    std::optional<size_t> Convert(const AVFrame& frame, float* out, size_t maxFrames);

    // Writes what was kept.
    size_t Take(float* out, size_t maxFrames);

    // Writes what was kept and what the filter still holds. Less than `maxFrames` means that was all.
    size_t Drain(float* out, size_t maxFrames);

    // Discards everything consumed so far.
    void Reset();

    // From now on the sound is this much faster, and higher: 1.0 means unchanged; at most 1 % away from that. The first
    // other pace drops what was kept.
    void SetPace(double pace);

private:
    struct SwrDeleter {
        void operator()(SwrContext* context) const;
    };
    bool Fits(const AVFrame& frame) const;
    bool Prepare(const AVFrame& frame, bool evenly);
    size_t TakeEnding(float* out, size_t maxFrames);

    uint32_t mixRate_;
    std::unique_ptr<SwrContext, SwrDeleter> swr_;
    std::unique_ptr<SwrContext, SwrDeleter> ending_;  // for samples of the previous format, to be drained first
    int format_ = -1, rate_ = 0, channels_ = 0;
    double pace_ = 1.0;
    uint64_t layout_ = 0;
};

}  // namespace hullrider
