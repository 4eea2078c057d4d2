#include "dialogs/table_columns.h"

#include <gtest/gtest.h>

#include <numeric>

namespace hullrider {

TEST(TableColumns, TextsShareTheWidthAndNumbersKeepTheirs) {
    const std::vector<bool> grows{true, true, false};
    EXPECT_EQ(SpreadColumns({150, 100, 60}, grows, 310, 40), (std::vector<int>{150, 100, 60}));
    EXPECT_EQ(SpreadColumns({150, 100, 60}, grows, 560, 40), (std::vector<int>{300, 200, 60}));
    EXPECT_EQ(SpreadColumns({150, 100, 60}, grows, 185, 40), (std::vector<int>{75, 50, 60}));
    EXPECT_EQ(SpreadColumns({150, 100, 60}, grows, 100, 40), (std::vector<int>{40, 40, 60})) << "too narrow";
    EXPECT_EQ(SpreadColumns({0, 0, 60}, grows, 300, 40)[2], 60);
    EXPECT_EQ(SpreadColumns({70, 80}, {false, false}, 400, 40), (std::vector<int>{70, 80}));
    for (int room = 300; room < 400; ++room) {
        const std::vector<int> widths = SpreadColumns({101, 77, 60}, grows, room, 40);
        EXPECT_EQ(std::accumulate(widths.begin(), widths.end(), 0), room) << "no gap at the right, no scroll bar";
    }
}

}  // namespace hullrider
