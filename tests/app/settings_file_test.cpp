#include "app/settings_file.h"

#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>

#include "tests/console_capture.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

using Json = nlohmann::json;

// The keys in the order of the format, each with a value that is not the built-in one.
const std::vector<std::pair<std::string, Json>>& AllKeys() {
    static const std::vector<std::pair<std::string, Json>> keys = [] {
        const auto object = nlohmann::ordered_json::parse(R"({"directoryPaths": ["/m\u00fcsic", "D:\\Music"],
            "volumeLevel": 0.25, "songPlayDurationMin": 46, "songPlayDurationMax": 111, "FADE_DURATION_MS": 8001,
            "rawFav": 51, "rawMIDI": 52, "rawMP3": 53, "rawTracker": -54, "songsBeforeSoundfontChange": 2,
            "textR": 1, "textG": 2, "textB": 3, "bkGrR": 4, "bkGrG": 5, "bkGrB": 6, "songR": 7, "songG": 8, "songB": 9,
            "windowAlpha": 200, "lowVolume": 0.125, "highVolume": 0.75, "useRumble": 0, "textureAlpha": 26,
            "useRumbleToggle": 0, "rumbleTime": 501, "rumbleTimeToggle": 101, "iSongPlayDurationMin": 61,
            "iSongPlayDurationMax": 181, "randomColorPlayer": 1, "borderlessAuto": 1, "currentBkTextureName": "Wood",
            "currentLCDTextureName": "Stone", "bkTextureAlpha": 27, "historyDepth": -1, "versionCheck": false,
            "rawRadio": 21, "audioBookDirectoryPaths": ["/books"], "toggleLatchMode": true,
            "toggleLatchDurationMs": 2001, "bookPlayDurationMin": 101, "bookPlayDurationMax": 401,
            "playbackSpeedPercent": -12.5, "toggleLatchActiveTimeMs": 2002})");
        std::vector<std::pair<std::string, Json>> list;
        for (const auto& [key, value] : object.items()) list.emplace_back(key, value);
        return list;
    }();
    return keys;
}

constexpr size_t kRequiredKeys = 38;

Json FullObject() {
    Json object;
    for (const auto& [key, value] : AllKeys()) object[key] = value;
    return object;
}

Json ObjectOf(const Settings& settings) {
    return Json::parse(SettingsText(settings));
}

StateReading Read(const Json& object, Settings& settings) {
    std::string error;
    const StateReading reading = ReadSettings(object.dump(), settings, error);
    EXPECT_EQ(error.empty(), reading == StateReading::kWhole);
    return reading;
}

TEST(SettingsFile, EveryKeyIsReadAndWritten) {
    Settings settings;
    EXPECT_EQ(Read(FullObject(), settings), StateReading::kWhole);
    EXPECT_EQ(settings.directoryPaths, (std::vector<std::string>{"/m\xC3\xBCsic", "D:\\Music"}));
    EXPECT_EQ(settings.rawTracker, -54);
    EXPECT_EQ(settings.songB, 9);
    EXPECT_EQ(settings.highVolume, 0.75F);
    EXPECT_EQ(settings.currentLCDTextureName, "Stone");
    EXPECT_FALSE(settings.versionCheck);
    EXPECT_EQ(settings.toggleLatchActiveTimeMs, 2002);
    EXPECT_EQ(ObjectOf(settings), FullObject());
    EXPECT_EQ(ObjectOf(settings).size(), 44U);
}

// A new user's player starts with these; the keys that are not here may change with its looks.
TEST(SettingsFile, TheBuiltInValuesStay) {
    const Json table = Json::parse(R"({"directoryPaths": [], "volumeLevel": 0.5, "songPlayDurationMin": 45,
        "songPlayDurationMax": 110, "FADE_DURATION_MS": 8000, "rawFav": 50, "rawMIDI": 50, "rawMP3": 50,
        "rawTracker": 50, "rawRadio": 20, "songsBeforeSoundfontChange": 1, "lowVolume": 0.1, "highVolume": 0.8,
        "useRumble": 1, "textureAlpha": 25, "rumbleTime": 500, "rumbleTimeToggle": 100, "iSongPlayDurationMin": 60,
        "iSongPlayDurationMax": 180, "randomColorPlayer": 0, "borderlessAuto": 0, "toggleLatchMode": false,
        "toggleLatchDurationMs": 2000, "bookPlayDurationMin": 100, "bookPlayDurationMax": 400,
        "playbackSpeedPercent": 0, "toggleLatchActiveTimeMs": 2000})");
    const Json builtIn = ObjectOf({});
    for (const auto& [key, value] : table.items()) EXPECT_EQ(builtIn[key], value) << key;
}

// Each required key once missing and once of a wrong type: what stands before it comes from the file, what follows is
// built in.
TEST(SettingsFile, ARequiredKeyThatIsMissingOrOfAnotherTypeEndsTheReading) {
    const Json builtIn = ObjectOf({});
    for (size_t stop = 0; stop < kRequiredKeys; ++stop) {
        const auto& [stopKey, stopValue] = AllKeys()[stop];
        Json missing = FullObject();
        missing.erase(stopKey);
        Json wrong = FullObject();
        wrong[stopKey] = stopValue.is_string() ? Json(1) : Json("1");
        for (const Json& object : {missing, wrong}) {
            Settings settings;
            settings.volumeLevel = 0.9F;  // left over from before
            EXPECT_EQ(Read(object, settings), StateReading::kPartly) << stopKey;
            const Json result = ObjectOf(settings);
            for (size_t i = 0; i < AllKeys().size(); ++i) {
                const std::string& key = AllKeys()[i].first;
                EXPECT_EQ(result[key], i < stop ? AllKeys()[i].second : builtIn[key]) << stopKey << ' ' << key;
            }
        }
    }
}

TEST(SettingsFile, AnOptionalKeyThatIsMissingOrOfAnotherTypeTakesItsDefaultAndTheRestIsRead) {
    Json older = FullObject();
    for (size_t i = kRequiredKeys; i < AllKeys().size(); ++i) older.erase(AllKeys()[i].first);
    Json odd = FullObject();
    odd["bookPlayDurationMin"] = 5.5;
    Settings settings;
    EXPECT_EQ(Read(older, settings), StateReading::kWhole);
    Json expected = ObjectOf({});
    expected.update(older);
    EXPECT_EQ(ObjectOf(settings), expected);
    EXPECT_EQ(Read(odd, settings), StateReading::kPartly);
    odd["bookPlayDurationMin"] = 100;
    EXPECT_EQ(ObjectOf(settings), odd);
}

TEST(SettingsFile, JsonTypesAreTakenStrictly) {
    const struct {
        const char* key;
        std::vector<const char*> taken, refused;
    } table[] = {
        {"rawFav", {"7", "-2147483648"}, {"2147483648", "-2147483649", "18446744073709551615", "7.0", "true", "null"}},
        {"volumeLevel", {"1", "0.3"}, {"1e300", "true"}},
        {"versionCheck", {"false"}, {"1"}},
        {"directoryPaths", {"[]"}, {"[\"a\",1]", "\"a\"", "{}", "null"}},
    };
    for (const auto& row : table) {
        const auto reading = [&](const char* value) {
            Json object = FullObject();
            object[row.key] = Json::parse(value);
            Settings settings;
            return Read(object, settings);
        };
        for (const char* value : row.taken) EXPECT_EQ(reading(value), StateReading::kWhole) << row.key << value;
        for (const char* value : row.refused) EXPECT_EQ(reading(value), StateReading::kPartly) << row.key << value;
    }
}

TEST(SettingsFile, ValuesOutsideTheirRangeArePutIntoIt) {
    const struct {
        const char* key;
        double value;
        double expected;
    } table[] = {{"volumeLevel", 1.5, 1},    {"lowVolume", -1, 0},
                 {"textR", 256, 255},        {"bkGrB", -1, 0},
                 {"windowAlpha", 0, 40},     {"windowAlpha", 1000, 255},
                 {"textureAlpha", 300, 255}, {"historyDepth", -2, -1},
                 {"rumbleTime", -5, 0},      {"FADE_DURATION_MS", -1, 0},
                 {"rawMIDI", -3, -3},        {"songPlayDurationMax", -1, -1}};
    for (const auto& row : table) {
        Json object = FullObject();
        object[row.key] = object[row.key].is_number_float() ? Json(row.value) : Json(static_cast<int>(row.value));
        Settings settings;
        EXPECT_EQ(Read(object, settings), StateReading::kWhole);
        EXPECT_EQ(ObjectOf(settings)[row.key].get<double>(), row.expected) << row.key;
    }
}

TEST(SettingsFile, NumbersAreWrittenAsAPersonWould) {
    Settings settings;
    settings.volumeLevel = 0.7F;
    settings.highVolume = std::numeric_limits<float>::infinity();
    const std::string text = SettingsText(settings);
    EXPECT_NE(text.find("\"volumeLevel\": 0.7,"), std::string::npos) << text;
    EXPECT_NE(text.find("\"lowVolume\": 0.1,"), std::string::npos);
    EXPECT_NE(text.find("\"highVolume\": 0.8,"), std::string::npos) << "no number: the built-in value";
    Settings again;
    EXPECT_EQ(Read(Json::parse(text), again), StateReading::kWhole);
    EXPECT_EQ(again.volumeLevel, 0.7F);
}

TEST(SettingsFile, ASavedFileIsLoadedWholeAndWhatFailsIsOneLine) {
    const TemporaryFolder folder;
    const std::string path = folder.At("MusicSettings.json");
    Settings settings, loaded;
    settings.rawMP3 = 3;
    settings.currentBkTextureName = "not text \xFF";
    ConsoleCapture console;
    ASSERT_TRUE(SaveSettings(path, settings));
    EXPECT_EQ(LoadSettings(path, loaded), StateReading::kWhole);
    EXPECT_EQ(loaded.rawMP3, 3);
    EXPECT_EQ(loaded.currentBkTextureName, "not text \xEF\xBF\xBD");
    EXPECT_FALSE(SaveSettings(folder.At("no folder/a.json"), {}));
    EXPECT_EQ(LoadSettings(folder.At("none.json"), loaded), StateReading::kUnreadable);
    EXPECT_EQ(console.Output() + console.Errors(), "Failed to open file for writing: " + folder.At("no folder/a.json") +
                                                       "\nFailed to open file for reading: " + folder.At("none.json") +
                                                       "\n");
}

TEST(SettingsFile, WhatIsNoObjectIsUnreadable) {
    const std::string full = FullObject().dump();
    for (const std::string& text : {std::string(), std::string("[]"), full.substr(0, full.size() / 2), full + "}",
                                    std::string(1'000'000, '['), std::string("{\"currentBkTextureName\":\"\xC3\"}")}) {
        Settings settings;
        std::string error;
        EXPECT_EQ(ReadSettings(text, settings, error), StateReading::kUnreadable) << text.substr(0, 50);
        EXPECT_NE(error, "");
    }
}

}  // namespace
}  // namespace hullrider
