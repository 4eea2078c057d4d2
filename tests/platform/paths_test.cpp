#include "platform/paths.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string_view>
#include <utility>

namespace hullrider {

TEST(Paths, Utf8IsJudgedAsTheStandardSays) {
    for (const char* good :
         {"", "plain", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x8E\xB5", "\xED\x9F\xBF", "\xEF\xBF\xBF"}) {
        EXPECT_TRUE(IsUtf8(good)) << good;
    }
    for (const char* bad : {"\x80", "\xC3", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF0\x80\x80\x80",
                            "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "a\xE2\x82"}) {
        EXPECT_FALSE(IsUtf8(bad)) << bad;
    }
}

TEST(Paths, AStateFileLiesInItsFolderWhateverSlashItsNameBeginsWith) {
    const std::string expected = Utf8FromPath(std::filesystem::path("folder") / "config.json");
    EXPECT_EQ(StatePath("folder", "\\config.json"), expected);
    EXPECT_EQ(StatePath("folder", "/config.json"), expected);
    EXPECT_EQ(StatePath("folder", "config.json"), expected);
    EXPECT_EQ(StatePath("folder", "\\sub\\a b.txt"),
              Utf8FromPath((std::filesystem::path("folder") / "sub" / "a b.txt").make_preferred()));
}

TEST(Paths, AFolderIsWhatIsBeforeTheLastSeparatorOfEitherKind) {
    const std::pair<std::string_view, std::string_view> table[] = {{"D:\\Music\\A\\1.mp3", "D:\\Music\\A"},
                                                                   {"/m/A\\1.mp3", "/m/A"},
                                                                   {"D:\\A/1.mp3", "D:\\A"},
                                                                   {"/m/A/", "/m/A"},
                                                                   {"/A", ""},
                                                                   {"1.mp3", ""},
                                                                   {"", ""}};
    for (const auto& [path, folder] : table) EXPECT_EQ(FolderOf(path), folder) << path;
}

TEST(Paths, AnAbsolutePathIsTheSamePlaceInItsShortestForm) {
    EXPECT_EQ(AbsolutePath("a/../some/./folder/"), StatePath(WorkingFolder(), "some\\folder"));
    const std::string root = Utf8FromPath(std::filesystem::current_path().root_path());
    EXPECT_EQ(AbsolutePath(root), root);
}

#ifndef _WIN32
TEST(Paths, ANameThatIsNotTextIsRefused) {
    EXPECT_THROW(Utf8FromPath(std::filesystem::path("\xFF\xFE")), std::range_error);
}
#endif

}  // namespace hullrider
