#include <memory>
#include <vector>

#include "audio/block_clock.h"
#include "audio/mixer.h"
#include "audio/output.h"

namespace hullrider {

namespace {

class NullOutput : public Output {
public:
    explicit NullOutput(uint32_t rate) : rate_(rate), block_(BlockClock::BlockFrames(rate) * kStereo) {}

    uint32_t Rate() const override { return rate_; }
    uint32_t LatencyFrames() const override { return 0; }
    std::string Description() const override { return "no sound device, " + std::to_string(rate_) + " Hz"; }

    bool Start(Mixer& mixer) override {
        clock_ = std::make_unique<BlockClock>(rate_, [&](size_t frames) { mixer.Render(block_.data(), frames); });
        return true;
    }

    void Stop() override { clock_.reset(); }

private:
    uint32_t rate_;
    std::vector<float> block_;
    std::unique_ptr<BlockClock> clock_;  // last: its thread ends before the block goes
};

}  // namespace

std::unique_ptr<Output> OpenNullOutput(uint32_t rate) {
    return std::make_unique<NullOutput>(rate);
}

}  // namespace hullrider
