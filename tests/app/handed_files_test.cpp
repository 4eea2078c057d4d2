// Files handed to players without a window.
#include "app/handed_files.h"

#include "app/commands.h"
#include "playback/pick.h"
#include "playback/queue.h"
#include "playback/stream_slots.h"
#include "tests/app/whole_player.h"
#include "tests/platform/fake_clock.h"

namespace hullrider {
namespace {

class HandedFilesTest : public WholePlayerTest {
protected:
    HandedFilesTest() {
        for (const char* song : {"music/A/one.mp3", "drop/two.mp3", "drop/three.mp3", "else/four.mp3"}) {
            folder_.Write(song, ToneWav(440.0, 60.0));
        }
    }

    AppState& StartWithMusic(const std::vector<std::string>& files = {}) {
        RunOptions options;
        options.music = {folder_.At("music")};
        for (const std::string& name : files) options.files.push_back(folder_.At(name));
        return Start(options).state;
    }

    void Hand(const std::vector<std::string>& names) {
        std::vector<std::string> paths;
        for (const std::string& name : names) paths.push_back(folder_.At(name));
        PlayFiles(*player_, paths);
        PollPlayer(*player_);
    }

    const std::string& Title() const { return player_->state.playback.item.title; }
};

TEST_F(HandedFilesTest, WhatIsHandedOverLaterReplacesTheQueueAndWithoutMusicNothingChanges) {
    AppState& state = StartWithMusic();
    RunCommand(*player_, kStopCommand);
    Hand({"data", "missing"});
    EXPECT_EQ(ErrorBoxes::last, "The files contain no music that can be played.");
    EXPECT_EQ(CurrentHandle(state.playback), 0U);
    EXPECT_FALSE(QueueIn(state.library));

    Hand({"drop"});
    EXPECT_NE(CurrentHandle(state.playback), 0U);
    EXPECT_EQ(state.playback.item.secondLine, "drop");
    EXPECT_TRUE(HasQueuedSong(state));
    *player_->handed.queuedAt -= std::chrono::seconds(3);
    Hand({"else/four.mp3"});
    EXPECT_EQ(Title(), "four");
    EXPECT_FALSE(HasQueuedSong(state));
    EXPECT_EQ(state.library.playlists.size(), 2U);
}

TEST_F(HandedFilesTest, FilesThatComeOneByOneAtOnceAreOneQueue) {
    AppState& state = StartWithMusic();
    PlayFiles(*player_, {folder_.At("drop/two.mp3")});
    PlayFiles(*player_, {folder_.At("drop/three.mp3")});
    PollPlayer(*player_);
    Hand({"else/four.mp3"});
    for (const char* title : {"two", "three", "four", "one"}) {
        EXPECT_EQ(Title(), title);
        RunCommand(*player_, kNextSongCommand);
    }
    EXPECT_EQ(state.history.records.size(), 6U) << "the first was of the mix";
}

TEST_F(HandedFilesTest, TheFilesOfTheCommandLineComeFirstAndLeaveNothingBehind) {
    AppState& state = StartWithMusic({"drop/three.mp3", "else"});
    EXPECT_EQ(Title(), "three");
    EXPECT_EQ(state.history.records.size(), 1U);
    EXPECT_EQ(state.library.typedSongCount, 1);
    RunCommand(*player_, kNextSongCommand);
    EXPECT_EQ(Title(), "four");
    RunCommand(*player_, kFavoriteUpCommand);
    EXPECT_EQ(PlayingSong(state)->favoriteCount, 1);
    Stop(*player_);
    EXPECT_EQ(StateFile("favorite.json")["favorites"].size(), 1U);
    EXPECT_EQ(StartWithMusic().library.playlists.size(), 1U);
}

TEST_F(HandedFilesTest, TheyPlayThoughThereIsNoOtherMusicOrAScanLooksForIt) {
    RunOptions options;
    options.files = {folder_.At("drop/two.mp3")};
    Begin(options);
    EXPECT_EQ(Title(), "two");
    EXPECT_FALSE(IsLookingForMusic(*player_));
    EXPECT_TRUE(ScanEnds(*player_));
    EXPECT_EQ(Title(), "two");
}

}  // namespace
}  // namespace hullrider
