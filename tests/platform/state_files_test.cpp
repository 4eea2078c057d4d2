#include "platform/state_files.h"

#include <gtest/gtest.h>

#include "tests/console_capture.h"
#include "tests/temporary_folder.h"

namespace hullrider {

TEST(StateFiles, WhatCannotBeReadIsOneLineAndIsKept) {
    const TemporaryFolder folder;
    const std::string path = folder.At("a.json");
    struct {
        const char* content;  // null: no file
        StateReading understood;
        const char* error;  // empty: nothing is printed
        bool kept;
    } const table[] = {{nullptr, StateReading::kUnreadable, "cannot open\n", false},
                       {"x", StateReading::kWhole, "", false},
                       {"x", StateReading::kPartly, "Failed to read PATH: odd\n", true},
                       {"x", StateReading::kUnreadable, "Failed to read PATH: odd\n", true}};
    for (const auto& row : table) {
        std::filesystem::remove(folder.Path() / "a.json.bad");
        if (row.content != nullptr) folder.Write("a.json", row.content);
        const auto read = [&](std::string_view text, std::string& error) {
            EXPECT_EQ(text, row.content);
            if (row.understood != StateReading::kWhole) error = "odd";
            return row.understood;
        };
        ConsoleCapture console;
        EXPECT_EQ(LoadStateFile(path, "cannot open", read), row.understood);
        std::string expected = row.error;
        if (const size_t at = expected.find("PATH"); at != std::string::npos) expected.replace(at, 4, path);
        EXPECT_EQ(console.Errors(), expected);
        EXPECT_EQ(folder.Has("a.json.bad"), row.kept);
    }
    ConsoleCapture console;
    EXPECT_EQ(LoadStateFile(folder.At("none"), "", {}), StateReading::kUnreadable);
    EXPECT_EQ(console.Errors(), "");
}

TEST(StateFiles, ALargeFileIsRefusedAndMovedAside) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.json", "");
    std::filesystem::resize_file(folder.Path() / "a.json", kMostStateBytes + 1);
    const auto read = [](std::string_view, std::string&) {
        ADD_FAILURE() << "it was read";
        return StateReading::kWhole;
    };
    ConsoleCapture console;
    EXPECT_EQ(LoadStateFile(path, "", read), StateReading::kUnreadable);
    EXPECT_EQ(console.Errors(), "Failed to read " + path + ": it is larger than 64 MB\n");
    EXPECT_FALSE(folder.Has("a.json"));
    EXPECT_EQ(std::filesystem::file_size(folder.Path() / "a.json.bad"), kMostStateBytes + 1);
}

}  // namespace hullrider
