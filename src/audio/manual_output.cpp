#include "audio/manual_output.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <vector>

#include "audio/channel.h"
#include "audio/engine.h"

namespace hullrider {

namespace {

using std::chrono::microseconds;

constexpr std::chrono::seconds kPatience(10);  // with a channel whose decoder delivers nothing

class ManualOutput : public Output {
public:
    ManualOutput(uint32_t rate, bool limited) : rate_(rate), limited_(limited) {}
    uint32_t Rate() const override { return rate_; }
    bool Start(Mixer&) override { return true; }
    void Stop() override {}
    uint32_t LatencyFrames() const override { return 0; }
    bool IsLimited() const override { return limited_; }
    std::string Description() const override { return "rendered on demand, " + std::to_string(rate_) + " Hz"; }

private:
    uint32_t rate_;
    bool limited_;
};

void WaitForDecoders(Engine& engine, size_t frames) {
    std::vector<std::shared_ptr<Channel>> channels;
    engine.Channels().ForEach([&](const std::shared_ptr<Channel>& channel) { channels.push_back(channel); });
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    for (const std::shared_ptr<Channel>& channel : channels) {
        if (!channel->ReadyFor(frames)) engine.Decoders().Attend(channel);
        const auto ready = [&] { return channel->IsFreed() || channel->ReadyFor(frames); };
        while (!ready() && std::chrono::steady_clock::now() < deadline) {
            channel->PassOverVoid();
            std::this_thread::sleep_for(microseconds(50));
        }
    }
}

}  // namespace

bool InitManualOutput(uint32_t rate, bool limited) {
    return InstallEngine(std::make_unique<ManualOutput>(rate, limited));
}

bool RenderManually(float* out, size_t frames, size_t blockFrames) {
    const std::shared_ptr<Engine> engine = CurrentEngine();
    if (engine == nullptr) return false;
    while (frames > 0) {
        const size_t now = std::min(frames, blockFrames);
        WaitForDecoders(*engine, now);
        engine->TheMixer().Render(out, now);
        out += now * kStereo;
        frames -= now;
    }
    return true;
}

}  // namespace hullrider
