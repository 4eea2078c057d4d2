#include "input/hotkey_file.h"

#include <gtest/gtest.h>

#include <exception>
#include <nlohmann/json.hpp>

#include "platform/state_files.h"
#include "tests/console_capture.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

// One binding's text, with one of its values changed, or left out.
std::string Binding(const std::string& key = "vkKey", const std::string& value = "65") {
    nlohmann::json binding = {{"vkKey", 65},
                              {"ctrl", true},
                              {"alt", false},
                              {"shift", false},
                              {"gameControllerButton", -1},
                              {"gameControllerTrigger", 3}};
    binding.erase(key);
    if (!value.empty()) binding[key] = nlohmann::json::parse(value);
    return binding.dump();
}

// Why the text is refused; empty when it is not.
std::string Error(const std::string& text, HotkeyBindings& bindings) {
    try {
        ReadHotkeyConfig(text, bindings);
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

TEST(HotkeyFile, WhatWasSavedIsLoadedInTheOrderOfItsKeys) {
    const TemporaryFolder folder;
    const HotkeyBindings saved{{0x74, true, false, false, 4, -1}, {'J', false, true, true, -1, 1}};
    const std::string path = folder.At("hotkeyConfig.json");
    ASSERT_TRUE(SaveHotkeyConfig(path, saved));
    std::string text = folder.Read("hotkeyConfig.json");
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_EQ(text, R"([{"vkKey":116,"ctrl":true,"alt":false,"shift":false,"gameControllerButton":4,)"
                    R"("gameControllerTrigger":-1},{"vkKey":74,"ctrl":false,"alt":true,"shift":true,)"
                    R"("gameControllerButton":-1,"gameControllerTrigger":1}])");
    HotkeyBindings loaded = BuiltInHotkeys();  // more than the file has
    ASSERT_TRUE(LoadHotkeyConfig(path, loaded));
    EXPECT_EQ(HotkeyConfigText(loaded), HotkeyConfigText(saved));
}

TEST(HotkeyFile, NumbersAreTakenAsTheyComeAndFlagsAreBooleans) {
    const std::pair<std::string, int32_t> keys[] = {
        {"7", 7}, {"true", 1}, {"65.9", 65}, {"-1.5", -1}, {"99999999999", INT32_MAX}, {"-1e300", INT32_MIN}};
    for (const auto& [value, expected] : keys) {
        HotkeyBindings bindings;
        EXPECT_EQ(Error("[" + Binding("vkKey", value) + "]", bindings), "") << value;
        ASSERT_EQ(bindings.size(), 1U) << value;
        EXPECT_EQ(bindings[0].vkKey, expected) << value;
    }
    const std::string table[][3] = {{"ctrl", "1", "type must be boolean, but is number"},
                                    {"shift", "\"true\"", "type must be boolean, but is string"},
                                    {"vkKey", "\"65\"", "type must be number, but is string"},
                                    {"vkKey", "null", "type must be number, but is null"},
                                    {"gameControllerButton", "[]", "type must be number, but is array"},
                                    {"gameControllerTrigger", "{}", "type must be number, but is object"},
                                    {"alt", "", "key 'alt' not found"}};
    for (const auto& [key, value, expected] : table) {
        HotkeyBindings bindings(9);
        const std::string error = Error("[" + Binding() + "," + Binding(key, value) + "," + Binding() + "]", bindings);
        EXPECT_NE(error.find(expected), std::string::npos) << error;
        EXPECT_EQ(bindings.size(), 1U) << key;  // what came before the bad one
    }
}

TEST(HotkeyFile, WhatIsNoListLeavesTheBindings) {
    for (const std::string text : {"", "{}", "null", "7", "[1", "[{]", "\xFF"}) {
        HotkeyBindings bindings(9);
        EXPECT_NE(Error(text, bindings), "") << text;
        EXPECT_EQ(bindings.size(), 9U) << text;
    }
    HotkeyBindings bindings(9);
    EXPECT_NE(Error("[[]]", bindings), "");
    EXPECT_EQ(Error("[]", bindings), "");
    EXPECT_TRUE(bindings.empty());
}

TEST(HotkeyFile, StartUpMendsABadFileAndKeepsIt) {
    const TemporaryFolder folder;
    const std::string text = "[" + Binding() + "," + Binding("ctrl", "1") + "]";
    const std::string path = folder.Write("hotkeyConfig.json", text);
    HotkeyBindings bindings = BuiltInHotkeys();
    ConsoleCapture console;
    LoadHotkeyFiles(path, bindings);
    const std::string errors = console.Errors();
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
    EXPECT_NE(errors.find("type must be boolean, but is number"), std::string::npos) << errors;
    ASSERT_EQ(bindings.size(), 30U);
    EXPECT_EQ(bindings[0].vkKey, 65);
    EXPECT_EQ(bindings[1].vkKey, 0);
    EXPECT_EQ(folder.Read("hotkeyConfig.json.bad"), text);

    std::filesystem::resize_file(folder.Path() / "hotkeyConfig.json", kMostStateBytes + 1);
    LoadHotkeyFiles(path, bindings);
    EXPECT_EQ(std::filesystem::file_size(folder.Path() / "hotkeyConfig.json.bad"), kMostStateBytes + 1);
}

TEST(HotkeyFile, TheWorkingDirectorysFileIsReadOnlyWithoutAnOwnOne) {
    const TemporaryFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    folder.Write("hotkeyConfig.json", "[" + Binding("vkKey", "1") + "]");
    HotkeyBindings bindings = BuiltInHotkeys();
    {
        ConsoleCapture console;
        LoadHotkeyFiles(folder.At("own.json"), bindings);
        EXPECT_EQ(console.Errors(), "Unable to open file for reading: " + folder.At("own.json") + "\n");
    }
    ASSERT_EQ(bindings.size(), 1U);
    EXPECT_EQ(bindings[0].vkKey, 1);

    ConsoleCapture console;
    LoadHotkeyFiles(folder.Write("own.json", "[" + Binding() + "," + Binding("vkKey", "2") + "]"), bindings);
    std::filesystem::current_path(before);
    ASSERT_EQ(bindings.size(), 2U);
    EXPECT_EQ(bindings[1].vkKey, 2);
    EXPECT_EQ(console.Errors(), "");
    EXPECT_FALSE(SaveHotkeyConfig(folder.At("missing/own.json"), bindings));
}

}  // namespace
}  // namespace hullrider
