#include "audio/mixer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "audio/channel.h"

namespace hullrider {

namespace {

constexpr uint32_t kRate = 44100;

// A steady value, for so many frames.
class SteadySource : public Source {
public:
    explicit SteadySource(size_t frames) : left_(frames) {}
    SourceFormat Format() const override { return {kRate, kStereo, 0}; }
    int64_t Length() const override { return kRate; }
    int64_t LoopLength() const override { return 0; }
    SourceRead Read(float* out, size_t frames) override {
        const size_t now = std::min(frames, left_);
        std::fill_n(out, now * kStereo, 0.5f);
        left_ -= now;
        return {now, left_ == 0};
    }
    bool Seek(int64_t) override { return true; }

private:
    size_t left_;
};

}  // namespace

// Only a song that was under way and was not decoded in time: not one that has not begun, is paused, or is over.
TEST(Mixer, CountsTheFramesThatWereNotThereInTime) {
    constexpr size_t kBlock = 1000;
    Mixer mixer(kRate, false);
    std::vector<float> out(10 * kBlock * kStereo);
    const auto render = [&](size_t frames) {
        const uint64_t before = mixer.FramesLacked();
        mixer.Render(out.data(), frames);
        return mixer.FramesLacked() - before;
    };
    const auto channel =
        std::make_shared<Channel>(std::make_unique<SteadySource>(10 * kBlock), SourceRequest{"", kRate, false}, 0);
    ASSERT_TRUE(mixer.Add(channel));
    EXPECT_EQ(render(kBlock), 0u);
    channel->Play(false);
    EXPECT_EQ(render(kBlock), 0u);
    const SteadyTime now{};
    channel->DecodeAhead(now);
    EXPECT_EQ(render(kBlock), 0u);
    const uint64_t lacked = render(9 * kBlock);  // the first piece is shorter than that
    EXPECT_GT(lacked, kBlock);
    EXPECT_LT(lacked, 9 * kBlock);
    EXPECT_EQ(render(kBlock), kBlock);
    channel->Pause();
    EXPECT_EQ(render(kBlock), 0u);
    channel->Play(false);
    while (channel->State() == RunState::kPlaying) {
        channel->DecodeAhead(now);
        EXPECT_EQ(render(kBlock), 0u);
    }
    EXPECT_EQ(render(kBlock), 0u);
}

}  // namespace hullrider
