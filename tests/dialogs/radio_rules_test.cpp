#include "dialogs/radio_rules.h"

#include <gtest/gtest.h>

#include <utility>

namespace hullrider {
namespace {

TEST(RadioRules, ANumberThatIsSwitchedOffComesBackAsItWas) {
    int32_t depth = 33;
    OptionalNumber history(depth, -1, 20);
    history.Switch(false);
    EXPECT_EQ(depth, -1);
    EXPECT_FALSE(history.IsOn());
    EXPECT_EQ(history.Number(), 33);
    history.SetNumber(5);
    EXPECT_EQ(depth, -1) << "still off";
    history.Switch(true);
    EXPECT_EQ(depth, 5);
    depth = 7;  // by someone else
    history.Switch(false);
    history.Switch(true);
    EXPECT_EQ(depth, 7);
    for (const int32_t off : {-1, 0}) {
        depth = off;
        OptionalNumber never(depth, -1, 20);
        EXPECT_FALSE(never.IsOn()) << off;
        EXPECT_EQ(never.Number(), 20) << off;
        never.Switch(true);
        EXPECT_EQ(depth, 20) << off;
    }
}

TEST(RadioRules, TheEndsOfARangeDoNotCross) {
    int32_t least = 45, most = 110;
    MoveLeast(least, most, 60);
    EXPECT_EQ(std::pair(least, most), std::pair(60, 110));
    MoveLeast(least, most, 200);
    EXPECT_EQ(std::pair(least, most), std::pair(200, 200));
    MoveMost(least, most, 300);
    EXPECT_EQ(std::pair(least, most), std::pair(200, 300));
    MoveMost(least, most, 90);
    EXPECT_EQ(std::pair(least, most), std::pair(90, 90));
    EXPECT_EQ(StoppedHigh(0.3F, 0.4F), 0.4F);
    EXPECT_EQ(StoppedHigh(0.5F, 0.4F), 0.5F);
    EXPECT_EQ(StoppedLow(0.9F, 0.8F), 0.8F);
    EXPECT_EQ(StoppedLow(0.1F, 0.8F), 0.1F);
}

TEST(RadioRules, ACategoryWithoutMusicSaysSoInsteadOfItsShare) {
    MusicLibrary library;
    library.midiSongCount = 3;
    library.favoriteSongCount = 1;
    EXPECT_EQ(ShareText(kMidiCategory, 0.125, library), "13 %");
    EXPECT_EQ(ShareText(kMidiCategory, 0.0, library), "0 %") << "its weight is 0";
    EXPECT_EQ(ShareText(kFavoritesCategory, 0.0, library), "0 %");
    EXPECT_EQ(ShareText(kMp3Category, 0.0, library), "No audio files");
    EXPECT_EQ(ShareText(kTrackerCategory, 0.0, library), "No modules");
    EXPECT_EQ(ShareText(kRadioCategory, 0.0, library), "No stations");
    library = {};
    EXPECT_EQ(ShareText(kMidiCategory, 0.0, library), "No MIDI songs");
    EXPECT_EQ(ShareText(kFavoritesCategory, 0.0, library), "No favorites");

    EXPECT_EQ(HistoryRemark(20, 21), "");
    EXPECT_NE(HistoryRemark(20, 20), "");
    EXPECT_EQ(HistoryRemark(20, 0), "") << "before the first scan";
}

}  // namespace
}  // namespace hullrider
