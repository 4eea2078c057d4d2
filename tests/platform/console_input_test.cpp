#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include "platform/console.h"

namespace hullrider {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// A pipe in the standard input's place.
class ConsoleInputTest : public testing::Test {
protected:
    ConsoleInputTest() : before_(dup(STDIN_FILENO)) {
        int ends[2];
        if (pipe(ends) != 0) std::abort();
        dup2(ends[0], STDIN_FILENO);
        close(ends[0]);
        typed_ = ends[1];
    }
    ~ConsoleInputTest() override {
        dup2(before_, STDIN_FILENO);
        close(before_);
        if (typed_ >= 0) close(typed_);
    }

    void Type(const std::string& text) const {
        ASSERT_EQ(write(typed_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    ConsoleInput input_;
    int typed_ = -1;

private:
    const int before_;
};

TEST_F(ConsoleInputTest, AWaitEndsAtOnceWhenItIsAskedToAndLosesNoLine) {
    for (int round = 0; round < 3; ++round) {
        std::thread other([] {
            for (int i = 0; i < 1000; ++i) ConsoleInput::EndWait();
        });
        const auto before = Clock::now();
        EXPECT_EQ(input_.WaitForLine(1min), std::nullopt);
        EXPECT_LT(Clock::now() - before, 30s);
        other.join();
        while (input_.WaitForLine(0ms)) {
        }
    }
    input_.WaitForLine(0ms);
    const auto before = Clock::now();
    EXPECT_EQ(input_.WaitForLine(50ms), std::nullopt);
    EXPECT_GE(Clock::now() - before, 50ms) << "a wake-up that was seen wakes again";

    Type("one\ntwo\r\nthr");
    ConsoleInput::EndWait();
    EXPECT_EQ(input_.WaitForLine(1min), std::nullopt);
    EXPECT_EQ(input_.WaitForLine(1min), "one");
    EXPECT_EQ(input_.WaitForLine(1min), "two");
    Type("ee\n");
    EXPECT_EQ(input_.WaitForLine(1min), std::nullopt);
    EXPECT_EQ(input_.WaitForLine(1min), "three");
}

TEST_F(ConsoleInputTest, TheEndOfTheInputStillLetsAWaitBeEnded) {
    close(typed_);
    typed_ = -1;
    EXPECT_EQ(input_.WaitForLine(1min), std::nullopt);
    std::thread other(ConsoleInput::EndWait);
    const auto before = Clock::now();
    EXPECT_EQ(input_.WaitForLine(1min), std::nullopt);
    EXPECT_LT(Clock::now() - before, 30s);
    other.join();
}

}  // namespace
}  // namespace hullrider
