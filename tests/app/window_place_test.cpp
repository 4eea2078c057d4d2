#include "app/window_place.h"

#include <gtest/gtest.h>

namespace hullrider {

TEST(WindowPlace, ATitleOutsideTheScreenIsBroughtIntoSight) {
    constexpr ScreenBox kScreen{0, 40, 1600, 900};
    const struct {
        ScreenBox box;
        int32_t left, top;
    } table[] = {
        {{60, 80, 760, 300}, 60, 80},
        {{-500, 80, 200, 300}, -500, 80},   // 200 pixels of it can be caught
        {{-690, 80, 10, 300}, -540, 80},    // 10 could not
        {{1595, 80, 2295, 300}, 1440, 80},
        {{60, -100, 760, 120}, 60, 40},     // the title above the screen
        {{60, 895, 760, 1115}, 60, 870},    // and just below it
        {{5000, 5000, 5100, 5100}, 1500, 870},
        {{-10, 30, 2000, 1200}, -10, 40},   // larger than the screen
    };
    for (const auto& row : table) {
        const ScreenBox placed = BringTitleIntoSight(row.box, kScreen, 30);
        EXPECT_EQ(placed.left, row.left) << row.box.left;
        EXPECT_EQ(placed.top, row.top) << row.box.top;
        EXPECT_EQ(placed.right - placed.left, row.box.right - row.box.left);
        EXPECT_EQ(placed.bottom - placed.top, row.box.bottom - row.box.top);
    }
    EXPECT_EQ(BringTitleIntoSight({10, 10, 500, 500}, {0, 0, 100, 20}, 30).top, 0) << "a screen lower than a title";
}

}  // namespace hullrider
