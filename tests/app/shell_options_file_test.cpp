#include "app/shell_options_file.h"

#include <gtest/gtest.h>

namespace hullrider {

TEST(ShellOptionsFile, EveryOptionIsReadBackAsItWasWritten) {
    ShellOptions options{.x = -20, .y = 30, .width = 700, .height = 300};
    for (bool ShellOptions::*flag :
         {&ShellOptions::isMaximized, &ShellOptions::closesToTray, &ShellOptions::followsLoudness}) {
        ShellOptions written = options, read;
        written.*flag = true;
        std::string error;
        ASSERT_TRUE(ReadShellOptions(ShellOptionsText(written), read, error)) << error;
        EXPECT_EQ(read, written);
    }
    // The file's format: a change of both directions at once would lose every user's window.
    std::string error;
    ASSERT_TRUE(ReadShellOptions(R"({"x": 1, "y": 2, "width": 3, "height": 4, "closeToTray": true})", options, error));
    EXPECT_EQ(options, (ShellOptions{.x = 1, .y = 2, .width = 3, .height = 4, .closesToTray = true}));
}

}  // namespace hullrider
