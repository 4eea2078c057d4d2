#include "dialogs/number_rule.h"

#include <gtest/gtest.h>

namespace hullrider {
namespace {

constexpr NumberRule kSongs{1, 1000};
constexpr NumberRule kSeconds{0, 60000, 1000, 100};  // kept in milliseconds

TEST(NumberRule, WhatIsTypedIsANumberWithinTheBoundsOrTheyAreSaid) {
    const struct {
        NumberRule rule;
        const char* text;
        std::optional<int32_t> number;
    } table[] = {{kSongs, "1", 1},
                 {kSongs, "1000", 1000},
                 {kSongs, " 42 ", 42},
                 {kSongs, "007", 7},
                 {kSongs, "0", {}},
                 {kSongs, "1001", {}},
                 {kSongs, "", {}},
                 {kSongs, "1.5", {}},
                 {kSongs, "-5", {}},
                 {kSongs, "4x", {}},
                 {kSongs, "1e2", {}},
                 {kSongs, "nan", {}},
                 {kSongs, "99999999999999999999", {}},
                 {kSongs, "- 4", {}},
                 {kSeconds, "0", 0},
                 {kSeconds, "60", 60000},
                 {kSeconds, "8.5", 8500},
                 {kSeconds, "8,5", 8500},
                 {kSeconds, ".1", 100},
                 {kSeconds, "2.", 2000},
                 {kSeconds, "60.1", {}},
                 {kSeconds, "1.2.3", {}},
                 {kSeconds, "-0.1", {}},
                 {kSeconds, "0.0004", 0}};
    for (const auto& row : table) {
        std::string remark = "as before";
        EXPECT_EQ(ReadNumber(row.text, row.rule, remark), row.number) << row.text;
        const char* const bounds = row.rule.perUnit == 1 ? "From 1 to 1000" : "From 0 to 60";
        EXPECT_EQ(remark, row.number ? "" : bounds) << row.text;
    }
}

TEST(NumberRule, EveryNumberIsReadBackAsItIsShown) {
    EXPECT_EQ(NumberText(8000, 1000), "8.0");
    EXPECT_EQ(NumberText(8250, 1000), "8.25");
    EXPECT_EQ(NumberText(8005, 1000), "8.005");
    EXPECT_EQ(NumberText(-300, 1000), "-0.3");
    EXPECT_EQ(NumberText(999999, 1), "999999");
    std::string remark;
    for (int32_t ms = 0; ms <= 60000; ++ms) {
        if (ReadNumber(NumberText(ms, 1000), kSeconds, remark) != ms) ADD_FAILURE() << ms;
    }
}

TEST(NumberRule, ArrowsStepWithinTheBounds) {
    EXPECT_EQ(SteppedNumber(8000, 1, kSeconds), 8100);
    EXPECT_EQ(SteppedNumber(8000, -5, kSeconds), 7500);
    EXPECT_EQ(SteppedNumber(50, -1, kSeconds), 0);
    EXPECT_EQ(SteppedNumber(59950, 1, kSeconds), 60000);
    EXPECT_EQ(SteppedNumber(999999, 1, kSongs), 1000) << "a file may hold more";
    EXPECT_EQ(SteppedNumber(INT32_MAX, 1000, kSongs), 1000);
}

}  // namespace
}  // namespace hullrider
