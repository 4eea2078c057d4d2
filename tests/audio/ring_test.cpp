#include "audio/ring.h"

#include <gtest/gtest.h>

#include <thread>

namespace hullrider {

TEST(FrameRing, NeverHoldsMoreThanItsRoomNorLessThanNothing) {
    FrameRing ring(4);
    EXPECT_EQ(ring.Writable(100).size(), 4 * kStereo);
    ring.Commit(4);
    EXPECT_TRUE(ring.Writable(1).empty());
    ring.SkipTo(3);
    ring.SkipTo(1);  // never back
    EXPECT_EQ(ring.Taken(), 3u);
    EXPECT_EQ(ring.Writable(100).size(), 3 * kStereo);
    float out[kStereo * 4];
    EXPECT_EQ(ring.Take(out, 4), 1u);
    EXPECT_EQ(ring.Take(out, 4), 0u);
}

TEST(FrameRing, FramesArriveInOrderFromOneThreadToAnother) {
    constexpr uint32_t kFrames = 200000;
    FrameRing ring(333);
    std::thread writer([&] {
        uint32_t next = 0;
        while (next < kFrames) {
            const std::span<float> room = ring.Writable(100);
            for (size_t i = 0; i < room.size(); i += kStereo) room[i] = room[i + 1] = static_cast<float>(next++ % 4096);
            ring.Commit(room.size() / kStereo);
        }
    });
    uint32_t expected = 0, wrong = 0;
    float out[kStereo * 77];
    while (expected < kFrames) {
        const size_t taken = ring.Take(out, 77);
        for (size_t i = 0; i < taken; i++) wrong += out[i * kStereo] != static_cast<float>(expected++ % 4096);
    }
    writer.join();
    EXPECT_EQ(wrong, 0u);
}

}  // namespace hullrider
