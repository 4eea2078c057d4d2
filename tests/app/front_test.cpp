#include "app/front.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/console_capture.h"

namespace hullrider {

TEST(Front, TheExitStatusTellsBadOptionsFromFailures) {
    const auto plays = [](const RunOptions&) { return 7; };
    const auto fails = [](const RunOptions&) -> int { throw std::runtime_error("no room"); };
    std::string told;
    const auto tell = [&](const std::string& reason) { told += reason; };
    ConsoleCapture console;
    EXPECT_EQ(RunFront({}, plays, tell), 7);
    EXPECT_EQ(RunFront({"--nonsense"}, plays, tell), 2);
    EXPECT_EQ(RunFront({"--version"}, fails, tell), 0);
    EXPECT_EQ(told, "");
    EXPECT_EQ(RunFront({}, fails, tell), 1);
    EXPECT_EQ(told, "no room");
    EXPECT_EQ(console.Output(), VersionText() + "\n");
    EXPECT_NE(console.Errors().find("--nonsense"), std::string::npos);
}

}  // namespace hullrider
