#include "audio/decode_pool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <latch>
#include <thread>

#include "tests/eventually.h"

namespace hullrider {
namespace {

// Silence, from a drive that answers only when the latch is open.
class Distant : public Source {
public:
    explicit Distant(std::latch& answer) : answer_(answer) {}
    SourceFormat Format() const override { return {44100, 2, 0}; }
    int64_t Length() const override { return 1'000'000; }
    int64_t LoopLength() const override { return 0; }
    SourceRead Read(float* out, size_t frames) override {
        answer_.wait();
        std::fill_n(out, frames * kStereo, 0.0f);
        return {frames, false};
    }
    bool Seek(int64_t) override { return true; }

private:
    std::latch& answer_;
};

std::shared_ptr<Channel> ChannelOn(std::latch& drive) {
    return std::make_shared<Channel>(std::make_unique<Distant>(drive), SourceRequest{"", 44100, false}, 0);
}

}  // namespace

TEST(DecodePool, SongsOnADriveThatIsGoneDoNotHoldUpTheNextOne) {
    std::latch gone(1), there(0);
    DecodePool pool([] { return true; });
    std::vector<std::shared_ptr<Channel>> songs;
    for (int i = 0; i < 4; i++) {
        songs.push_back(ChannelOn(gone));
        pool.Enlist(songs.back());
        std::this_thread::sleep_for(std::chrono::milliseconds(600));
    }
    const std::shared_ptr<Channel> next = ChannelOn(there);
    next->Play(false);
    pool.Enlist(next);
    // Whoever waits for it asks again.
    EXPECT_TRUE(Eventually([&] {
        pool.Attend(next);
        return next->ReadyFor(100);
    }));

    for (const auto& song : songs) song->Play(false);
    gone.count_down();
    for (const auto& song : songs) {
        EXPECT_TRUE(Eventually([&] { return song->ReadyFor(100); }));
        pool.Drop(song);
    }
}

}  // namespace hullrider
