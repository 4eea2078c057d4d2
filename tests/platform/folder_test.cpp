#include "platform/folder.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

TEST(Folder, EveryEntryIsListedOnceWithItsKind) {
    const TemporaryFolder folder;
    folder.Write("file", "");
    folder.Write("\xC3\xA4", "");
    folder.Write("folder/inside", "");
    std::multimap<std::string, EntryKind> found;
    std::string error;
    EXPECT_TRUE(ListFolder(
        folder.Text(),
        [&](const FolderEntry& entry) {
            EXPECT_TRUE(entry.nameIsText);
            found.emplace(entry.name, entry.kind);
        },
        error));
    EXPECT_EQ(found, (std::multimap<std::string, EntryKind>{
                         {"file", EntryKind::kFile}, {"folder", EntryKind::kFolder}, {"\xC3\xA4", EntryKind::kFile}}));
    EXPECT_EQ(error, "");
}

TEST(Folder, WhatCannotBeListedSaysWhy) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("file", "");
    for (const std::string& path : {file, folder.At("missing"), std::string(), folder.Text() + std::string("\0x", 2)}) {
        std::string error;
        EXPECT_FALSE(ListFolder(
            path, [](const FolderEntry&) { FAIL(); }, error))
            << path;
        EXPECT_NE(error, "") << path;
        EXPECT_FALSE(IsFolder(path)) << path;
    }
    EXPECT_TRUE(IsFolder(folder.Text()));
}

TEST(Folder, PathsAreJoinedWithOneSeparator) {
    const std::string expected = Utf8FromPath(std::filesystem::path("a") / "b");
    EXPECT_EQ(JoinPath("a", "b"), expected);
    EXPECT_EQ(JoinPath(JoinPath("a", ""), "b"), expected);
    EXPECT_EQ(JoinPath("a/", "b"), "a/b");
}

}  // namespace
}  // namespace hullrider
