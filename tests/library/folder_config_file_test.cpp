#include "library/folder_config_file.h"

#include <gtest/gtest.h>

#include "tests/console_capture.h"
#include "tests/temporary_folder.h"

namespace hullrider {

TEST(FolderConfigFile, AKeyThatIsMissingOrNoTextLeavesItsFieldAlone) {
    const struct {
        const char* text;
        bool understood;
        const char* soundFonts;
        const char* companion;
    } table[] = {{"{}", true, "old fonts", "old game"},
                 {R"({"hullriderPath":"new"})", true, "old fonts", "new"},
                 {R"({"soundFontDirectoryPath":"","other":[1]})", true, "", "old game"},
                 {R"({"soundFontDirectoryPath":7,"hullriderPath":"new"})", false, "old fonts", "new"},
                 {R"({"soundFontDirectoryPath":"new","hullriderPath":null})", false, "new", "old game"},
                 {"[]", false, "old fonts", "old game"},
                 {"", false, "old fonts", "old game"},
                 {R"({"hullriderPath":"new")", false, "old fonts", "old game"},
                 {"{\"hullriderPath\":\"\xFF\"}", false, "old fonts", "old game"}};
    for (const auto& row : table) {
        const TemporaryFolder folder;
        const std::string path = folder.Write("config.json", row.text);
        FolderConfig config{"old fonts", "old game"};
        ConsoleCapture console;
        EXPECT_EQ(LoadFolderConfig(path, config), row.understood) << row.text;
        EXPECT_EQ(config.soundFontDirectoryPath, row.soundFonts) << row.text;
        EXPECT_EQ(config.hullriderPath, row.companion) << row.text;
        EXPECT_EQ(console.Errors().empty(), row.understood) << row.text;
        EXPECT_EQ(folder.Has("config.json.bad"), !row.understood) << row.text;
    }
}

TEST(FolderConfigFile, WhatWasSavedIsLoadedAndAMissingFileIsNotWorthALineButAFailedSaveIs) {
    const TemporaryFolder folder;
    FolderConfig config{"fonts", "game"};
    ConsoleCapture console;
    EXPECT_FALSE(LoadFolderConfig(folder.At("config.json"), config));
    EXPECT_EQ(config.soundFontDirectoryPath + config.hullriderPath, "fontsgame");
    EXPECT_FALSE(SaveFolderConfig(folder.At("missing/config.json"), {}));
    EXPECT_EQ(console.Errors(), "Failed to open file for writing: " + folder.At("missing/config.json") + "\n");
    ASSERT_TRUE(SaveFolderConfig(folder.At("config.json"), {"C:\\Fonts \"\xC3\xA4\"", "bad \xFF text"}));
    EXPECT_TRUE(LoadFolderConfig(folder.At("config.json"), config));
    EXPECT_EQ(config.soundFontDirectoryPath, "C:\\Fonts \"\xC3\xA4\"");
    EXPECT_EQ(config.hullriderPath, "bad \xEF\xBF\xBD text");
}

}  // namespace hullrider
