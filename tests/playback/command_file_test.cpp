#include "playback/command_file.h"

#include <gtest/gtest.h>

#include "tests/console_capture.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

using Lines = std::vector<std::string>;

TEST(CommandFile, LinesAreReadByTheirWordAndNumbers) {
    struct {
        const char* line;
        CommandWord word;
        double number;
        int32_t first, second;
    } const table[] = {{"NEXT_SONG", CommandWord::kNextSong, 0.0, 0, 0},
                       {"NEXT_SONG\r", CommandWord::kNextSong, 0.0, 0, 0},
                       {"NEXT_SONG and more", CommandWord::kNextSong, 0.0, 0, 0},
                       {"POS 12.5", CommandWord::kPosition, 12.5, 0, 0},
                       {"POS \t +3e1 \r", CommandWord::kPosition, 30.0, 0, 0},
                       {"VOL .25", CommandWord::kVolume, 0.25, 0, 0},
                       {"songPlayDurationMax 120", CommandWord::kSongPlayDurationMax, 0.0, 120, 0},
                       {"songPlayDurationMin 30.9", CommandWord::kSongPlayDurationMin, 0.0, 30, 0},
                       {"FADE_DURATION_MS 0", CommandWord::kFadeDurationMs, 0.0, 0, 0},
                       {"rawMidi -2147483648", CommandWord::kRawMidi, 0.0, INT32_MIN, 0},
                       {"rawTracker 2147483647", CommandWord::kRawTracker, 0.0, INT32_MAX, 0},
                       {"rawMP3 1", CommandWord::kRawMp3, 0.0, 1, 0},
                       {"rawFav 2", CommandWord::kRawFav, 0.0, 2, 0},
                       {"favoriteCount -0.5", CommandWord::kFavoriteCount, 0.0, 0, 0},
                       {"PLAY_SONG 3 14 15", CommandWord::kPlaySong, 0.0, 3, 14},
                       {"favoritesOnly", CommandWord::kFavoritesOnly, 0.0, 0, 0},
                       {"PREVIOUS_SONG", CommandWord::kPreviousSong, 0.0, 0, 0},
                       {"SHUFFLE", CommandWord::kShuffle, 0.0, 0, 0},
                       {"NEXT_PLAYLIST", CommandWord::kNextPlaylist, 0.0, 0, 0},
                       {"NEXT_SOUNDFONT", CommandWord::kNextSoundFont, 0.0, 0, 0}};
    for (const auto& row : table) {
        const std::optional<CommandLine> line = ParseCommandLine(row.line);
        ASSERT_TRUE(line) << row.line;
        EXPECT_EQ(line->word, row.word) << row.line;
        EXPECT_TRUE(line->number == row.number && line->first == row.first && line->second == row.second) << row.line;
    }
}

TEST(CommandFile, WhatIsNoCommandOrHasNoNumberIsPassedOver) {
    struct {
        const char* word;
        Lines rests;
    } const table[] = {{"", {"", " ", " NEXT_SONG", "next_song", std::string(1'000'000, 'x')}},
                       {"NEXT_SON", {"", "GS", std::string("G\0", 2)}},
                       {"rawMIDI", {" 5"}},  // the setting's name, not the word
                       {"POS", {"", "12", " twelve", " 12s", " nan", " -inf", " 1e999"}},
                       {"POS ", {std::string(1'000'000, ' '), std::string(1'000'000, 'n')}},
                       {"VOL", {" ++1", " 0x1", " 0,5"}},
                       {"rawMP3", {"", " 2147483648", " -2147483649", " 1e300"}},
                       {"PLAY_SONG", {" 1", " 1 x"}}};
    for (const auto& row : table) {
        for (const std::string& rest : row.rests) {
            EXPECT_FALSE(ParseCommandLine(row.word + rest)) << row.word << rest.substr(0, 40);
        }
    }
}

TEST(CommandFile, LinesAreTakenOnceWhenTheyHaveEndedAndTheFileIsEmptied) {
    const TemporaryFolder folder;
    ConsoleCapture console;
    CommandFile file;
    EXPECT_EQ(file.TakeLines(folder.Text()), Lines());
    EXPECT_EQ(file.TakeLines(folder.At("missing")), Lines());
    EXPECT_FALSE(folder.Has("commands.txt"));
    const std::string endless(1'000'000, 'x');
    struct {
        std::string written;
        Lines taken;
        bool empties;
    } const table[] = {{"VOL 1\r\n\nSHUFFLE\n", {"VOL 1\r", "SHUFFLE"}, true},
                       {"", {}, true},
                       {"POS 1", {}, false},  // half a line waits for its end
                       {"POS 12", {}, false},
                       {"POS 123\n", {"POS 123"}, true},
                       {"POS 4", {}, false},
                       {"POS 4", {"POS 4"}, true},  // one that stays as it is has no end, and none follows
                       {"SHUFFLE\n" + endless + "\nNEXT_SONG\n", {"SHUFFLE", "NEXT_SONG"}, true}};
    for (const auto& row : table) {
        folder.Write("commands.txt", row.written);
        EXPECT_EQ(file.TakeLines(folder.Text()), row.taken) << row.written.substr(0, 40);
        EXPECT_EQ(folder.Read("commands.txt").empty(), row.empties) << row.written.substr(0, 40);
    }
    folder.Write("commands.txt", std::string(5'000'000, '\n'));
    EXPECT_EQ(file.TakeLines(folder.Text()), Lines());
    EXPECT_EQ(folder.Read("commands.txt"), "") << "too large, and emptied unread";
    const std::string errors = console.Errors();
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
}

TEST(CommandFile, ManyLinesComeAFewAtATimeInTheirOrder) {
    const TemporaryFolder folder;
    CommandFile file;
    std::string text;
    for (int i = 0; i < 25; ++i) text += "rawMP3 " + std::to_string(i) + '\n';
    folder.Write("commands.txt", text);
    Lines taken;
    for (int call = 0; call < 3; ++call) {
        const Lines lines = file.TakeLines(folder.Text());
        EXPECT_LE(lines.size(), CommandFile::kLinesAtOnce);
        taken.insert(taken.end(), lines.begin(), lines.end());
        if (call == 0) folder.Write("commands.txt", "rawMP3 25\n");
    }
    ASSERT_EQ(taken.size(), 25U);
    EXPECT_EQ(taken.back(), "rawMP3 24");
    EXPECT_EQ(file.TakeLines(folder.Text()), Lines{"rawMP3 25"});
}

}  // namespace
}  // namespace hullrider
