#include <atomic>
#include <chrono>
#include <memory>
#include <vector>

#include "audio/block_clock.h"
#include "audio/mixer.h"
#include "audio/output.h"

namespace hullrider {

namespace {

using Clock = std::chrono::steady_clock;

// Waking up costs more than mixing, so blocks are long, except after a change that should take effect soon. While
// nothing plays, almost nothing is mixed: silence is the same at any length.
constexpr uint32_t kIdleMs = 10000;
constexpr uint32_t kCalmMs = 400;
constexpr uint32_t kBriskMs = 40;
constexpr std::chrono::seconds kBriskFor(1);

class NullOutput : public Output {
public:
    explicit NullOutput(uint32_t rate) : rate_(rate), block_(Frames(kCalmMs) * kStereo) {}

    uint32_t Rate() const override { return rate_; }
    uint32_t LatencyFrames() const override { return clock_->FramesLeft(); }
    std::string Description() const override { return "no sound device, " + std::to_string(rate_) + " Hz"; }

    bool Start(Mixer& mixer) override {
        clock_ = std::make_unique<BlockClock>(rate_, [&] { return PlayBlock(mixer); });
        return true;
    }
    void Stop() override { clock_->Stop(); }
    void Hasten() override;

private:
    size_t Frames(uint32_t ms) const { return size_t{rate_} * ms / 1000; }
    BlockClock::Block PlayBlock(Mixer& mixer);

    uint32_t rate_;
    std::vector<float> block_;
    std::atomic<bool> idle_{false};
    std::atomic<Clock::rep> briskUntil_{0};
    std::unique_ptr<BlockClock> clock_;  // last: its thread ends before the buffer is destroyed
};

BlockClock::Block NullOutput::PlayBlock(Mixer& mixer) {
    // Set before the mixer looks: a starting channel is either seen by it or sees this.
    idle_ = true;
    const bool brisk = Clock::now().time_since_epoch().count() < briskUntil_;
    const size_t piece = Frames(brisk ? kBriskMs : kCalmMs);
    mixer.Render(block_.data(), piece);
    if (!brisk && !mixer.Playing()) return {Frames(kIdleMs), true};
    idle_ = false;
    return {piece, false};
}

void NullOutput::Hasten() {
    briskUntil_ = (Clock::now() + kBriskFor).time_since_epoch().count();
    if (idle_) clock_->EndIdleBlock();
}

}  // namespace

std::unique_ptr<Output> OpenNullOutput(uint32_t rate) {
    return std::make_unique<NullOutput>(rate);
}

}  // namespace hullrider
