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
    static const std::vector<std::pair<std::string, Json>> keys{{"directoryPaths", {"/m\xC3\xBCsic", "D:\\Music"}},
                                                                {"volumeLevel", 0.25},
                                                                {"songPlayDurationMin", 46},
                                                                {"songPlayDurationMax", 111},
                                                                {"FADE_DURATION_MS", 8001},
                                                                {"rawFav", 51},
                                                                {"rawMIDI", 52},
                                                                {"rawMP3", 53},
                                                                {"rawTracker", -54},
                                                                {"songsBeforeSoundfontChange", 2},
                                                                {"textR", 1},
                                                                {"textG", 2},
                                                                {"textB", 3},
                                                                {"bkGrR", 4},
                                                                {"bkGrG", 5},
                                                                {"bkGrB", 6},
                                                                {"songR", 7},
                                                                {"songG", 8},
                                                                {"songB", 9},
                                                                {"windowAlpha", 200},
                                                                {"lowVolume", 0.125},
                                                                {"highVolume", 0.75},
                                                                {"useRumble", 0},
                                                                {"textureAlpha", 26},
                                                                {"useRumbleToggle", 0},
                                                                {"rumbleTime", 501},
                                                                {"rumbleTimeToggle", 101},
                                                                {"iSongPlayDurationMin", 61},
                                                                {"iSongPlayDurationMax", 181},
                                                                {"randomColorPlayer", 1},
                                                                {"borderlessAuto", 1},
                                                                {"currentBkTextureName", "Wood"},
                                                                {"currentLCDTextureName", "Stone"},
                                                                {"bkTextureAlpha", 27},
                                                                {"historyDepth", -1},
                                                                {"versionCheck", false},
                                                                {"rawRadio", 21},
                                                                {"audioBookDirectoryPaths", {"/books"}},
                                                                {"toggleLatchMode", true},
                                                                {"toggleLatchDurationMs", 2001},
                                                                {"bookPlayDurationMin", 101},
                                                                {"bookPlayDurationMax", 401},
                                                                {"playbackSpeedPercent", -12.5},
                                                                {"toggleLatchActiveTimeMs", 2002}};
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
    const std::vector<std::pair<std::string, Json>> table{{"directoryPaths", Json::array()},
                                                          {"volumeLevel", 0.5},
                                                          {"songPlayDurationMin", 45},
                                                          {"songPlayDurationMax", 110},
                                                          {"FADE_DURATION_MS", 8000},
                                                          {"rawFav", 50},
                                                          {"rawMIDI", 50},
                                                          {"rawMP3", 50},
                                                          {"rawTracker", 50},
                                                          {"rawRadio", 20},
                                                          {"songsBeforeSoundfontChange", 1},
                                                          {"lowVolume", 0.1},
                                                          {"highVolume", 0.8},
                                                          {"useRumble", 1},
                                                          {"textureAlpha", 25},
                                                          {"rumbleTime", 500},
                                                          {"rumbleTimeToggle", 100},
                                                          {"iSongPlayDurationMin", 60},
                                                          {"iSongPlayDurationMax", 180},
                                                          {"randomColorPlayer", 0},
                                                          {"borderlessAuto", 0},
                                                          {"toggleLatchMode", false},
                                                          {"toggleLatchDurationMs", 2000},
                                                          {"bookPlayDurationMin", 100},
                                                          {"bookPlayDurationMax", 400},
                                                          {"playbackSpeedPercent", 0},
                                                          {"toggleLatchActiveTimeMs", 2000}};
    const Json builtIn = ObjectOf({});
    for (const auto& [key, value] : table) EXPECT_EQ(builtIn[key], value) << key;
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

TEST(SettingsFile, AFileOfAnOlderVersionTakesTheDefaultsOfTheSixLastKeys) {
    Json object = FullObject();
    for (size_t i = kRequiredKeys; i < AllKeys().size(); ++i) object.erase(AllKeys()[i].first);
    Settings settings;
    EXPECT_EQ(Read(object, settings), StateReading::kWhole);
    EXPECT_EQ(settings.rawRadio, 21);
    EXPECT_FALSE(settings.toggleLatchMode);
    EXPECT_EQ(settings.toggleLatchDurationMs, 2000);
    EXPECT_EQ(settings.bookPlayDurationMin, 100);
    EXPECT_EQ(settings.bookPlayDurationMax, 400);
    EXPECT_EQ(settings.playbackSpeedPercent, 0.0F);
    EXPECT_EQ(settings.toggleLatchActiveTimeMs, 2000);
}

TEST(SettingsFile, AnOptionalKeyOfAnotherTypeTakesItsDefaultAndTheRestIsRead) {
    Json object = FullObject();
    object["bookPlayDurationMin"] = 5.5;
    Settings settings;
    EXPECT_EQ(Read(object, settings), StateReading::kPartly);
    EXPECT_EQ(settings.bookPlayDurationMin, 100);
    EXPECT_EQ(settings.bookPlayDurationMax, 401);
}

TEST(SettingsFile, JsonTypesAreTakenStrictly) {
    const struct {
        const char* key;
        const char* value;
        bool taken;
    } table[] = {{"rawFav", "7", true},
                 {"rawFav", "-2147483648", true},
                 {"rawFav", "2147483648", false},
                 {"rawFav", "-2147483649", false},
                 {"rawFav", "18446744073709551615", false},
                 {"rawFav", "7.0", false},
                 {"rawFav", "true", false},
                 {"rawFav", "null", false},
                 {"volumeLevel", "1", true},
                 {"volumeLevel", "0.3", true},
                 {"volumeLevel", "1e300", false},
                 {"volumeLevel", "true", false},
                 {"versionCheck", "1", false},
                 {"versionCheck", "false", true},
                 {"directoryPaths", "[]", true},
                 {"directoryPaths", "[\"a\",1]", false},
                 {"directoryPaths", "\"a\"", false},
                 {"directoryPaths", "{}", false},
                 {"directoryPaths", "null", false}};
    for (const auto& row : table) {
        Json object = FullObject();
        object[row.key] = Json::parse(row.value);
        Settings settings;
        EXPECT_EQ(Read(object, settings) == StateReading::kWhole, row.taken) << row.key << ' ' << row.value;
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

TEST(SettingsFile, ASavedFileIsLoadedWhole) {
    const TemporaryFolder folder;
    const std::string path = folder.At("MusicSettings.json");
    Settings settings;
    settings.rawMP3 = 3;
    settings.currentBkTextureName = "not text \xFF";
    ConsoleCapture console;
    ASSERT_TRUE(SaveSettings(path, settings));
    Settings loaded;
    EXPECT_EQ(LoadSettings(path, loaded), StateReading::kWhole);
    EXPECT_EQ(loaded.rawMP3, 3);
    EXPECT_EQ(loaded.currentBkTextureName, "not text \xEF\xBF\xBD");
    EXPECT_EQ(console.Output() + console.Errors(), "");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(SettingsFile, AMissingFileIsOneLineAndKeepsTheBuiltInValues) {
    const TemporaryFolder folder;
    Settings settings;
    ConsoleCapture console;
    EXPECT_EQ(LoadSettings(folder.At("none.json"), settings), StateReading::kUnreadable);
    EXPECT_EQ(console.Errors(), "Failed to open file for reading: " + folder.At("none.json") + "\n");
    EXPECT_EQ(ObjectOf(settings), ObjectOf({}));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(SettingsFile, AFileThatIsNotUnderstoodWhollyIsKeptBeside) {
    const std::string full = FullObject().dump();
    Json stopped = FullObject();
    stopped["rawMIDI"] = "50";
    const std::pair<std::string, StateReading> table[] = {
        {"", StateReading::kUnreadable},
        {"[]", StateReading::kUnreadable},
        {"null", StateReading::kUnreadable},
        {full.substr(0, full.size() / 2), StateReading::kUnreadable},
        {full + "}", StateReading::kUnreadable},
        {std::string(1'000'000, '['), StateReading::kUnreadable},
        {std::string("{\"\0", 3), StateReading::kUnreadable},
        {"{\"currentBkTextureName\":\"\xC3\"}", StateReading::kUnreadable},
        {std::string(5'000'000, ' '), StateReading::kUnreadable},
        {"{}", StateReading::kPartly},
        {stopped.dump(), StateReading::kPartly},
    };
    for (const auto& [text, expected] : table) {
        const TemporaryFolder folder;
        const std::string path = folder.Write("MusicSettings.json", text);
        Settings settings;
        ConsoleCapture console;
        EXPECT_EQ(LoadSettings(path, settings), expected) << text.substr(0, 50);
        const std::string errors = console.Errors();
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors.substr(0, 200);
        EXPECT_EQ(folder.Read("MusicSettings.json.bad"), text) << text.substr(0, 50);
    }
}

TEST(SettingsFile, AFailedSaveIsToldAndLeavesTheOldFile) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("MusicSettings.json", "old");
    std::filesystem::create_directory(folder.Path() / "MusicSettings.json.tmp");
    ConsoleCapture console;
    EXPECT_FALSE(SaveSettings(path, {}));
    EXPECT_EQ(console.Errors(), "Failed to open file for writing: " + path + "\n");
    EXPECT_EQ(folder.Read("MusicSettings.json"), "old");
}

}  // namespace
}  // namespace hullrider
