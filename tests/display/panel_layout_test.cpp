#include "display/panel_layout.h"

#include <gtest/gtest.h>

#include "display/panel_elements.h"
#include "state/shell_state.h"

namespace hullrider {
namespace {

struct WindowSize {
    int32_t width, height;
};

constexpr WindowSize kSizes[] = {{500, 155},  {750, 233}, {1000, 310},  {1250, 438}, {333, 99},
                                 {1600, 200}, {400, 900}, {3840, 1190}, {1, 1}};

PanelElement Element(size_t index) {
    return static_cast<PanelElement>(index);
}

bool Overlap(const Box& a, const Box& b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

// What overlaps would paint over each other when only one of the two is painted anew.
TEST(PanelLayout, ElementsLieWithinThePanelAndApart) {
    for (size_t i = 0; i < kElementCount; ++i) {
        const Box box = BoxOf(Element(i));
        EXPECT_TRUE(box.x > 0 && box.y > 0 && box.x + box.width < kPanelWidth && box.y + box.height < kPanelHeight)
            << i;
        for (size_t j = 0; j < i; ++j) EXPECT_FALSE(Overlap(box, BoxOf(Element(j)))) << i << ' ' << j;
        const bool onMetal = i < IndexOf(PanelElement::kSongBar);
        EXPECT_EQ(Overlap(box, kLcdBox), !onMetal) << i;
    }
}

TEST(PanelLayout, FitsEveryWindowInTheMiddleAndKeepsItsShape) {
    for (const WindowSize& size : kSizes) {
        const PanelScale scale = FitPanel(size.width, size.height);
        const PixelBox all = scale.ToPixels({0.0F, 0.0F, kPanelWidth, kPanelHeight});
        EXPECT_GE(all.x, 0);
        EXPECT_GE(all.y, 0);
        EXPECT_LE(all.x + all.width, size.width);
        EXPECT_LE(all.y + all.height, size.height);
        EXPECT_NEAR(all.x, size.width - all.x - all.width, 1);
        EXPECT_NEAR(all.y, size.height - all.y - all.height, 1);
        EXPECT_TRUE(all.width == size.width || all.height == size.height);
        EXPECT_LT(scale.x / scale.y, 1.36F);
        EXPECT_LT(scale.y / scale.x, 1.36F);
    }
}

TEST(PanelLayout, AClickOnAnElementMeansIt) {
    for (const WindowSize& size : kSizes) {
        if (size.width < 100) continue;
        const PanelScale scale = FitPanel(size.width, size.height);
        for (size_t i = 0; i < kElementCount; ++i) {
            const PixelBox box = scale.ToPixels(BoxOf(Element(i)));
            const auto found = ElementAt(scale.ToDesign(box.x + box.width / 2, box.y + box.height / 2));
            if (CommandOf(Element(i)) != 0) {
                ASSERT_TRUE(found) << i;
                EXPECT_EQ(*found, Element(i));
            } else {
                EXPECT_FALSE(found) << i;
            }
        }
    }
}

TEST(PanelLayout, TheKnobIsRoundAndTheRestIsNothing) {
    const Box knob = BoxOf(PanelElement::kVolume);
    EXPECT_FALSE(ElementAt({knob.x + 3.0F, knob.y + 3.0F}));
    EXPECT_TRUE(ElementAt({knob.x + 3.0F, knob.y + knob.height / 2.0F}));
    EXPECT_FALSE(ElementAt({-1.0F, -1.0F}));
    EXPECT_FALSE(ElementAt({3.0F, 3.0F}));
    EXPECT_FALSE(ElementAt({1e9F, 20.0F}));
}

}  // namespace
}  // namespace hullrider
