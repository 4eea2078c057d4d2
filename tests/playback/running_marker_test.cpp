#include "playback/running_marker.h"

#include <gtest/gtest.h>

#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

TEST(RunningMarker, ReplacesTheOldWord) {
    const TemporaryFolder folder;
    WriteRunningMarker(folder.Text(), "yes");
    WriteRunningMarker(folder.Text(), "no");
    EXPECT_EQ(folder.Read("MusicRunning.txt"), "no");
    WriteRunningMarker(folder.At("missing"), "yes");  // told on the console, nothing else
    EXPECT_FALSE(folder.Has("missing"));
}

}  // namespace
}  // namespace hullrider
