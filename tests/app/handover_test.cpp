#include "app/handover.h"

#include <gtest/gtest.h>

namespace hullrider {

TEST(Handover, BringsEveryPathWhatever) {
    const std::vector<std::string> paths{"C:\\My Music\\a \"b\".mp3", "\xC3\x84/\xE6\x97\xA5.mid", "x"};
    EXPECT_EQ(PathsOfHandover(HandoverText(paths)), paths);
    EXPECT_EQ(PathsOfHandover(HandoverText({})), std::vector<std::string>{});
}

TEST(Handover, WhatIsNoSuchTextHoldsNone) {
    using namespace std::string_view_literals;
    for (const std::string_view junk :
         {"a.mp3"sv, "a.mp3\0b"sv, "\0"sv, "a\0\0"sv, "\0a\0"sv, "\xFF\xFE\0"sv, "a\0\xC3\0"sv}) {
        EXPECT_TRUE(PathsOfHandover(junk).empty()) << junk;
    }
}

}  // namespace hullrider
