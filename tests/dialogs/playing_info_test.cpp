#include "dialogs/playing_info.h"

#include <gtest/gtest.h>

#include "playback/pick.h"

namespace hullrider {
namespace {

std::string Value(const PlayingInfo& info, const std::string& name) {
    for (size_t i = 0; i < info.size(); ++i) {
        if (name == kPlayingNames[i]) return info[i];
    }
    return "no such name: " + name;
}

// Three MIDI songs of which the second one is a favorite, and a tracker module.
class PlayingInfoTest : public testing::Test {
protected:
    PlayingInfoTest() {
        state_.library.playlists = {{"Bach", {{"/m/Bach/a.mid"}, {"/m/Bach/b.mid", 1, 17, 2}, {"/m/Bach/c.mid"}}},
                                    {"Amiga", {{"/m/Amiga/d.XM", 0, 0, 0, kTracker}}}};
        state_.weights = {.favorites = 10, .midi = 30, .mp3 = 0, .tracker = 60, .radio = 0};
        Play(0, 1);
    }

    void Play(int32_t playlist, int32_t song) {
        state_.playback.item = MakeSongItem(state_.library, {playlist, song, 0, 0});
        state_.playback.songLengthSec = 200.0;
        state_.playback.startSec = 60.0;
        state_.playback.endSec = 150.0;
    }

    PlayingInfo Info() { return MakePlayingInfo(state_, picker_, facts_); }
    std::string DrawnAs() { return DrawnAsText(state_, picker_); }

    AppState state_;
    PickerState picker_;
    ChannelFacts facts_{{"Toccata", "J. S. Bach"}, 44100, 2, "/fonts/Grand.sf2"};
};

TEST_F(PlayingInfoTest, SaysWhatTheFileIsAndHowItPlays) {
    const PlayingInfo info = Info();
    EXPECT_EQ(Value(info, "Title"), "Toccata");
    EXPECT_EQ(Value(info, "Artist"), "J. S. Bach");
    EXPECT_EQ(Value(info, "Album"), "Bach");
    EXPECT_EQ(Value(info, "File"), "/m/Bach/b.mid");
    EXPECT_EQ(Value(info, "Length"), "3:20, plays 1:00 to 2:30");
    EXPECT_EQ(Value(info, "Format"), "MIDI (.mid), 44,100 Hz, stereo, Grand");
    EXPECT_EQ(Value(info, "Plays"), "17");
    EXPECT_EQ(Value(info, "Favorite"), "count 2");
    EXPECT_EQ(Value(info, "Loudness"), "as mastered");

    state_.playback.startSec = 0.0;
    state_.playback.endSec = 200.0;
    EXPECT_EQ(Value(Info(), "Length"), "3:20");
    facts_ = {};
    EXPECT_EQ(Value(Info(), "Title"), "Nothing plays");
    EXPECT_EQ(Value(Info(), "File"), "");
}

TEST_F(PlayingInfoTest, TheGainIsTheChangeToTheUsersVolume) {
    VolumeState& volume = *state_.playback.volume;
    volume.realTimeVolume = true;
    volume.targetRms = 3500.0F;
    EXPECT_EQ(Value(Info(), "Loudness"), "being measured");
    volume.averageMusicRms = 17500.0F;  // a volume of 0.2 instead of the user's 0.1
    EXPECT_EQ(Value(Info(), "Loudness"), "+6.0 dB");
    volume.averageMusicRms = 70000.0F;
    EXPECT_EQ(Value(Info(), "Loudness"), "-6.0 dB");
    EXPECT_EQ(GainText(0.0), "silent");
}

// The draw is by whole percents, from 0 to the weight of MIDI inclusive.
TEST_F(PlayingInfoTest, TellsWhyASongWasDrawn) {
    EXPECT_EQ(DrawnAs(), "favorite, 3 of 5 chances; kind MIDI 31 %, favorites 9 %");
    Play(0, 0);
    EXPECT_EQ(DrawnAs(), "1 of 5 chances; kind MIDI 31 %");
    Play(1, 0);
    EXPECT_EQ(DrawnAs(), "1 of 1 chance; kind Tracker modules 60 %");
    state_.playback.relaxed = Relaxation::kHistory;
    EXPECT_EQ(DrawnAs(), "1 of 1 chance; kind Tracker modules 60 %; every other song was heard lately");
    state_.selection.playMode = kPlaylistMode;
    EXPECT_EQ(DrawnAs(), "drawn from this playlist: 1 song");
    state_.library.playlists[1].isQueue = true;
    EXPECT_EQ(DrawnAs(), "you asked for it");
    state_.selection.previousSongMode = true;
    EXPECT_EQ(DrawnAs(), "heard before, from the history");
    state_.playback.item.place.playlist = -1;
    EXPECT_EQ(DrawnAs(), "no longer in the library");
    EXPECT_EQ(Value(Info(), "Plays"), "");
}

}  // namespace
}  // namespace hullrider
