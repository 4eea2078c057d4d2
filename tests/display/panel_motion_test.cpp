// What moves: the meter and the names that scroll.
#include <gtest/gtest.h>

#include <limits>

#include "display/marquee.h"
#include "display/meter_ballistics.h"
#include "display/volume_notice.h"

namespace hullrider {
namespace {

constexpr double kFrameSec = 1.0 / 30.0;

TEST(MeterScale, WhatIsNoLevelIsSilenceAndWhatIsTooLoudIsFull) {
    for (const float none : {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN()}) EXPECT_EQ(MeterScale(none), 0.0F);
    EXPECT_EQ(MeterScale(7.0F), 1.0F);
}

TEST(MeterBallistics, RisesAtOnceAndFallsSlowlyWhateverTheFrameRate) {
    MeterBallistics coarse, fine;
    coarse.Step(1.0F, kFrameSec);
    fine.Step(1.0F, kFrameSec);
    EXPECT_FLOAT_EQ(coarse.Level(), 1.0F);
    for (int i = 0; i < 3; ++i) coarse.Step(0.0F, 0.2);
    for (int i = 0; i < 60; ++i) fine.Step(0.0F, 0.01);
    EXPECT_NEAR(coarse.Level(), fine.Level(), 1e-4);
    EXPECT_GT(coarse.Level(), 0.5F);
    EXPECT_LT(coarse.Level(), 0.8F);
}

TEST(MeterBallistics, WhenNothingPlaysNoPeakIsHeldAndItIsAtRestSoon) {
    MeterBallistics meter;
    meter.Step(1.0F, kFrameSec);
    double fallSec = 0.0;
    for (; !meter.AtRest() && fallSec < 10.0; fallSec += kFrameSec) {
        meter.Fall(kFrameSec);
        EXPECT_EQ(meter.Peak(), meter.Level());
    }
    EXPECT_LT(fallSec, 2.0);
}

TEST(VolumeNotice, IsShownWhileTheVolumeIsTurnedAndAMomentLonger) {
    VolumeNotice notice;
    EXPECT_FALSE(notice.Follow(0.5F, 100.0)) << "it was not turned";
    EXPECT_FALSE(notice.Follow(0.5F, 101.0));
    EXPECT_TRUE(notice.Follow(0.6F, 102.0));
    EXPECT_TRUE(notice.Follow(0.7F, 103.0));
    EXPECT_TRUE(notice.Follow(0.7F, 104.0));
    EXPECT_FALSE(notice.Follow(0.7F, 105.0));
}

TEST(MeterBallistics, HoldsThePeakAndThenLetsItFallToTheLevel) {
    MeterBallistics meter;
    meter.Step(1.0F, kFrameSec);
    for (double t = 0.0; t < 1.0; t += kFrameSec) {
        meter.Step(0.1F, kFrameSec);
        EXPECT_FLOAT_EQ(meter.Peak(), 1.0F);
    }
    for (double t = 0.0; t < 4.0; t += kFrameSec) {
        meter.Step(0.1F, kFrameSec);
        EXPECT_GE(meter.Peak(), meter.Level());
    }
    EXPECT_FLOAT_EQ(meter.Peak(), MeterScale(0.1F));
    meter.Step(1.0F, kFrameSec);
    for (double t = 0.0; t < 1.0; t += kFrameSec) meter.Step(0.1F, kFrameSec);
    EXPECT_FLOAT_EQ(meter.Peak(), 1.0F) << "each one is held";
    for (double t = 0.0; t < 4.0; t += kFrameSec) meter.Step(0.1F, kFrameSec);
    EXPECT_FALSE(meter.AtRest());
    for (double t = 0.0; t < 6.0; t += kFrameSec) meter.Step(0.0F, kFrameSec);
    EXPECT_TRUE(meter.AtRest());
}

TEST(Marquee, ANameThatFitsStaysAndALongOneRestsRunsThroughAndRests) {
    EXPECT_EQ(MarqueeOffset({100, 100, 20, 50.0}, 30.0), 0);
    const MarqueeLine line{300, 100, 20, 40.0};  // 320 pixels in 8 s, after 2.5 s of rest
    EXPECT_EQ(MarqueeOffset(line, 0.0), 0);
    EXPECT_EQ(MarqueeOffset(line, 2.4), 0);
    EXPECT_EQ(MarqueeOffset(line, 3.5), 40);
    EXPECT_EQ(MarqueeOffset(line, 10.4), 316);
    EXPECT_EQ(MarqueeOffset(line, 10.6), 0);
    EXPECT_EQ(MarqueeOffset(line, 14.0), 40);
    EXPECT_EQ(MarqueeOffset(line, -1.0), 0);
    for (double t = 0.0; t < 40.0; t += kFrameSec) {
        const int32_t offset = MarqueeOffset(line, t);
        EXPECT_TRUE(offset >= 0 && offset < line.textPx + line.gapPx) << t;
    }
}

}  // namespace
}  // namespace hullrider
