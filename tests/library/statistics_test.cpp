#include "library/statistics.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/temporary_folder.h"

namespace hullrider {

TEST(Statistics, CountThisRunAndAllTime) {
    const TemporaryFolder folder;
    const std::string path = folder.At("Sonorant_Stats.json");
    for (int run = 1; run <= 2; ++run) {
        Statistics statistics;
        EXPECT_EQ(LoadStatistics(path, statistics), run == 2);
        CountStart(statistics);
        for (int skips = 0; skips < 2; ++skips) CountSkip(statistics);
        CountPlayed(statistics, 1, true);
        CountHeard(statistics, 1, true, 12.5);
        CountPlayed(statistics, 3, false);
        CountPlayed(statistics, 77, true);
        CountHeard(statistics, 0, false, -5.0);
        ASSERT_TRUE(SaveStatistics(path, statistics));
        EXPECT_EQ(statistics.thisRun.byType[1].count, 1);
        EXPECT_EQ(statistics.allTime.byType[1].count, run);
        EXPECT_EQ(statistics.allTime.byType[1].seconds, 12.5 * run);
        EXPECT_EQ(statistics.allTime.favorites.count, run);
        EXPECT_EQ(statistics.allTime.favorites.seconds, 12.5 * run);
        EXPECT_EQ(statistics.allTime.byType[3].count, run);
        EXPECT_EQ(statistics.allTime.byType[0].seconds, 0.0);
        EXPECT_EQ(statistics.allTime.starts, run);
        EXPECT_EQ(statistics.allTime.skips, 2 * run);
    }
}

TEST(Statistics, JunkIsNothingAndFullCountersStayFull) {
    StatisticsCounts counts;
    std::string error;
    for (const char* text : {"", "[]", "null", "{"}) EXPECT_FALSE(ReadStatistics(text, counts, error)) << text;
    ASSERT_TRUE(ReadStatistics(R"({"midi":{"count":"x","seconds":[]},"mp3":7,"starts":99999999999999999999,
        "skips":-4,"tracker":{"count":9223372036854775807,"seconds":1e300}})",
                               counts, error));
    EXPECT_EQ(counts.byType[0].count, 0);
    EXPECT_EQ(counts.skips, 0);
    Statistics statistics;
    statistics.allTime = counts;
    CountPlayed(statistics, 2, false);
    EXPECT_EQ(statistics.allTime.byType[2].count, std::numeric_limits<int64_t>::max());
    StatisticsCounts again;
    EXPECT_TRUE(ReadStatistics(StatisticsText(statistics.allTime), again, error));
    EXPECT_EQ(again.byType[2].seconds, counts.byType[2].seconds);
}

}  // namespace hullrider
