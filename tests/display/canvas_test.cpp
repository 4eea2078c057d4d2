#include "display/canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

#include "display/segment_digits.h"

namespace hullrider {
namespace {

constexpr double kPi = 3.14159265358979;

double Area(const Coverage& coverage) {
    double sum = 0.0;
    for (int32_t y = 0; y < coverage.Height(); ++y) {
        for (int32_t x = 0; x < coverage.Width(); ++x) sum += coverage.At(x, y) / 255.0;
    }
    return sum;
}

TEST(Coverage, ShapesHaveTheirAreaAtEveryScale) {
    for (const float scale : {1.0F, 1.37F, 2.0F, 5.0F}) {
        const auto side = static_cast<int32_t>(40.0F * scale);
        const double unit = static_cast<double>(scale) * static_cast<double>(scale);
        const Box all{0.0F, 0.0F, 40.0F, 40.0F};
        Coverage disc(side, side), square(side, side), star(side, side);
        disc.Add(scale, all, [](Point p) { return DistanceToCircle(p, {20.0F, 20.0F}, 9.0F); });
        EXPECT_NEAR(Area(disc) / unit, kPi * 81.0, 2.0);
        square.Add(scale, all, [](Point p) { return DistanceToBox(p, {10.3F, 8.1F, 12.5F, 6.25F}, 0.0F); });
        EXPECT_NEAR(Area(square) / unit, 12.5 * 6.25, 1.5);
        const std::array<Point, 3> corners{{{5.0F, 30.0F}, {15.0F, 10.0F}, {25.0F, 30.0F}}};
        star.Add(scale, all, [&](Point p) { return DistanceToPolygon(p, corners); });
        EXPECT_NEAR(Area(star) / unit, 200.0, 2.0);
        square.Cut(scale, all, [](Point) { return -10.0F; });
        EXPECT_EQ(Area(square), 0.0);
    }
}

TEST(Coverage, AnArcIsItsShareOfTheRing) {
    constexpr float kQuarter = 1.5707963F;
    Coverage arc(200, 200);
    arc.Add(2.0F, {0.0F, 0.0F, 100.0F, 100.0F}, [](Point p) {
        return DistanceToArc(p, {50.0F, 50.0F}, 30.0F, -kQuarter, kQuarter, 4.0F);
    });
    EXPECT_NEAR(Area(arc) / 4.0, kPi * 30.0 * 4.0 + kPi * 4.0, 5.0);  // half a ring and its round ends
    EXPECT_GT(arc.At(100, 40), 200);                                  // clockwise from above: over the center
    EXPECT_EQ(arc.At(100, 160), 0);
}

TEST(Canvas, PaintsWithinItsClipAndItself) {
    constexpr int32_t kSide = 12;
    std::array<uint32_t, kSide * kSide> pixels{};
    Canvas canvas(pixels.data(), kSide, kSide);
    canvas.Clip({3, 4, 100, 2});
    Coverage full(40, 40);
    for (int32_t y = 0; y < 40; ++y) {
        for (int32_t x = 0; x < 40; ++x) full.Set(x, y, 255);
    }
    canvas.Paint(full, -20, -20, {Rgb{255, 128, 1}});
    canvas.PaintBox({-5, 5, 50, 50}, {Rgb{0, 0, 0}, Rgb{0, 0, 0}});
    for (int32_t y = 0; y < kSide; ++y) {
        for (int32_t x = 0; x < kSide; ++x) {
            EXPECT_EQ(canvas.At(x, y), y == 4 && x >= 3 ? 0xFF8001U : 0U) << x << ' ' << y;
        }
    }
}

TEST(Canvas, HalfOfAColorIsHalfwayThereAndLeavesTheOtherPartsAlone) {
    std::array<uint32_t, 1> pixel{0x204060};
    Canvas canvas(pixel.data(), 1, 1);
    canvas.PaintBox({0, 0, 1, 1}, {Rgb{0x40, 0x40, 0x80}, 0.5F});
    EXPECT_EQ(pixel[0], 0x304070U);
}

TEST(SegmentDigits, LightTheSegmentsThatADigitHasAndAreAsWideAsTheySay) {
    constexpr float kScale = 3.0F;
    // From the top clockwise, then the middle.
    const Point segments[] = {{5.5F, 1.15F},  {9.85F, 5.5F}, {9.85F, 14.5F}, {5.5F, 18.85F},
                              {1.15F, 14.5F}, {1.15F, 5.5F}, {5.5F, 10.0F}};
    const char* const lit[] = {"012345", "12", "01346", "01236", "1256", "02356", "023456", "012", "0123456", "012356"};
    for (int digit = 0; digit < 10; ++digit) {
        Coverage coverage(70, 90);
        AddSegmentText(coverage, kScale, std::to_string(digit), 1.0F, 1.0F);
        std::string seen;
        for (int i = 0; i < 7; ++i) {
            const float x = 1.0F + segments[i].x + (kSegmentDigitHeight - segments[i].y) * 0.09F;  // they lean
            const float y = 1.0F + segments[i].y;
            if (coverage.At(static_cast<int32_t>(x * kScale), static_cast<int32_t>(y * kScale)) > 128)
                seen += std::to_string(i);
        }
        EXPECT_EQ(seen, lit[digit]);
    }
    for (const char* text : {"0:00", "12:34:56", "8"}) {
        Coverage coverage(500, 70);
        AddSegmentText(coverage, kScale, text, 1.0F, 1.0F);
        int32_t right = 0;
        for (int32_t i = 0; i < 500 * 70; ++i)
            right = coverage.At(i % 500, i / 500) > 0 ? std::max(right, i % 500) : right;
        EXPECT_NEAR(static_cast<float>(right), (1.0F + SegmentTextWidth(text)) * kScale, 10.0F) << text;
    }
}

}  // namespace
}  // namespace hullrider
