#include "platform/files.h"

#include <gtest/gtest.h>
#ifdef __linux__
#include <sys/resource.h>

#include <csignal>
#endif

#include "tests/temporary_folder.h"

namespace hullrider {

TEST(Files, AWrittenFileReadsBackAndLeavesNothingBeside) {
    const TemporaryFolder folder;
    const std::string path = folder.At("st\xC3\xA4te.json");  // a name outside ASCII
    ASSERT_TRUE(WriteWholeFile(path, "old"));
    ASSERT_TRUE(WriteWholeFile(path, std::string("new\0line\r\n", 10)));
    EXPECT_EQ(ReadWholeFile(path, 100), std::string("new\0line\r\n", 10));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(Files, AFailedWriteLeavesTheOldFile) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("state.json", "old");
    std::filesystem::create_directory(folder.Path() / "state.json.tmp");  // the temporary file cannot be opened
    EXPECT_FALSE(WriteWholeFile(path, "new"));
    EXPECT_EQ(folder.Read("state.json"), "old");

    std::string error;
    const std::string taken = folder.At("taken");  // a folder with something in it cannot be moved over
    folder.Write("taken/file", "x");
    EXPECT_EQ(WriteWholeFile(taken, folder.At("t"), "new", error), WriteResult::kCannotMove);
    EXPECT_NE(error, "");
    EXPECT_FALSE(folder.Has("t"));
}

TEST(Files, WhatIsNotAReadableFileOfReasonableSizeIsNothing) {
    const TemporaryFolder folder;
    folder.Write("huge", std::string(101, 'x'));
    EXPECT_FALSE(ReadWholeFile(folder.At("missing"), 100));
    EXPECT_FALSE(ReadWholeFile(folder.At("huge"), 100));
    EXPECT_FALSE(ReadWholeFile(folder.Text(), 100));
    EXPECT_TRUE(ReadWholeFile(folder.At("huge"), 101));
}

TEST(Files, ABadFileThatCannotBeKeptYetIsNotWrittenOver) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.json", "mine");
    folder.Write("a.json.bad/file", "x");  // in the way of the copy
    EXPECT_FALSE(KeepBadFile(path));
    EXPECT_FALSE(WriteWholeFile(path, "defaults"));
    EXPECT_EQ(folder.Read("a.json"), "mine");

    std::filesystem::remove_all(folder.Path() / "a.json.bad");
    folder.Write("a.json.bad", "older and longer");
    EXPECT_TRUE(WriteWholeFile(path, "defaults"));
    EXPECT_EQ(folder.Read("a.json.bad"), "mine");
    EXPECT_EQ(folder.Read("a.json"), "defaults");
    EXPECT_TRUE(WriteWholeFile(path, "newer"));
    EXPECT_EQ(folder.Read("a.json.bad"), "mine");

    // One that has gone meanwhile is nothing to be kept, and neither is what takes its place.
    std::filesystem::remove(path);
    EXPECT_FALSE(KeepBadFile(path));
    EXPECT_TRUE(WriteWholeFile(path, "first"));
    EXPECT_TRUE(WriteWholeFile(path, "second"));
    EXPECT_EQ(folder.Read("a.json.bad"), "mine");
}

#ifdef __linux__
TEST(Files, ABadFileThatCannotBeCopiedIsMovedThere) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.json", "{broken");
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    const rlimit fullDisk{1, unlimited.rlim_max};
    const auto old = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &fullDisk);
    const bool kept = KeepBadFile(path);
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, old);
    EXPECT_TRUE(kept);
    EXPECT_EQ(folder.Read("a.json.bad"), "{broken");
    EXPECT_FALSE(folder.Has("a.json"));
}
#endif

}  // namespace hullrider
