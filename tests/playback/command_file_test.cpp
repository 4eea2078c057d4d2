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
    } const table[] = {
        {"NEXT_SONG", CommandWord::kNextSong, 0.0, 0, 0},
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
        {"NEXT_SOUNDFONT", CommandWord::kNextSoundFont, 0.0, 0, 0},
    };
    for (const auto& row : table) {
        const std::optional<CommandLine> line = ParseCommandLine(row.line);
        ASSERT_TRUE(line) << row.line;
        EXPECT_EQ(line->word, row.word) << row.line;
        EXPECT_EQ(line->number, row.number) << row.line;
        EXPECT_EQ(line->first, row.first) << row.line;
        EXPECT_EQ(line->second, row.second) << row.line;
    }
}

TEST(CommandFile, WhatIsNoCommandOrHasNoNumberIsPassedOver) {
    const std::string table[] = {"",
                                 " ",
                                 " NEXT_SONG",
                                 "next_song",
                                 "NEXT_SONGS",
                                 "NEXT_SON",
                                 "rawMIDI 5",  // the setting's name, not the word
                                 "POS",
                                 "POS12",
                                 "POS twelve",
                                 "POS 12s",
                                 "POS nan",
                                 "POS -inf",
                                 "POS 1e999",
                                 "VOL ++1",
                                 "VOL 0x1",
                                 "VOL 0,5",
                                 "rawMP3",
                                 "rawMP3 2147483648",
                                 "rawMP3 -2147483649",
                                 "rawMP3 1e300",
                                 "PLAY_SONG 1",
                                 "PLAY_SONG 1 x",
                                 std::string("NEXT_SONG\0", 10),
                                 std::string(1'000'000, 'x'),
                                 "POS " + std::string(1'000'000, ' '),
                                 "POS " + std::string(1'000'000, 'n')};
    for (const std::string& line : table) EXPECT_FALSE(ParseCommandLine(line)) << line.substr(0, 40);
}

TEST(CommandFile, LinesAreTakenOnceAndTheFileIsEmptied) {
    const TemporaryFolder folder;
    CommandFile file;
    EXPECT_EQ(file.TakeLines(folder.Text()), Lines());
    EXPECT_EQ(file.TakeLines(folder.At("missing")), Lines());
    EXPECT_FALSE(folder.Has("commands.txt"));

    folder.Write("commands.txt", "VOL 1\r\n\nSHUFFLE\n");
    EXPECT_EQ(file.TakeLines(folder.Text()), (Lines{"VOL 1\r", "SHUFFLE"}));
    EXPECT_EQ(folder.Read("commands.txt"), "");
    EXPECT_EQ(file.TakeLines(folder.Text()), Lines());
}

TEST(CommandFile, AHalfLineWaitsForItsEnd) {
    const TemporaryFolder folder;
    CommandFile file;
    folder.Write("commands.txt", "POS 1");
    EXPECT_EQ(file.TakeLines(folder.Text()), Lines());
    folder.Write("commands.txt", "POS 12");
    EXPECT_EQ(file.TakeLines(folder.Text()), Lines());
    folder.Write("commands.txt", "POS 123\n");
    EXPECT_EQ(file.TakeLines(folder.Text()), Lines{"POS 123"});
    // One that stays as it is has no end, and none follows.
    folder.Write("commands.txt", "POS 4");
    EXPECT_EQ(file.TakeLines(folder.Text()), Lines());
    EXPECT_EQ(file.TakeLines(folder.Text()), Lines{"POS 4"});
    EXPECT_EQ(folder.Read("commands.txt"), "");
}

TEST(CommandFile, AnEndlessLineAndAHugeFileStopNothing) {
    const TemporaryFolder folder;
    CommandFile file;
    folder.Write("commands.txt", "SHUFFLE\n" + std::string(1'000'000, 'x') + "\nNEXT_SONG\n");
    EXPECT_EQ(file.TakeLines(folder.Text()), (Lines{"SHUFFLE", "NEXT_SONG"}));

    folder.Write("commands.txt", std::string(5'000'000, '\n'));
    ConsoleCapture console;
    EXPECT_EQ(file.TakeLines(folder.Text()), Lines());
    EXPECT_EQ(folder.Read("commands.txt"), "");
    EXPECT_NE(console.Errors(), "");
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
