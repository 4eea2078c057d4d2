// Plays through the null output in real time, on songs of a pure tone that the test writes.
#include "playback/play_next.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "audio/bass.h"
#include "playback/seek.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"
#include "playback/transport.h"
#include "tests/eventually.h"
#include "tests/inline_workers.h"
#include "tests/playback/made_library.h"
#include "tests/temporary_folder.h"
#include "tests/tone_wav.h"

namespace hullrider {
namespace {

using namespace std::chrono_literals;

class PlayNextTest : public testing::Test {
protected:
    PlayNextTest() { BASS_Init(0, 44100, 0, nullptr, nullptr); }
    ~PlayNextTest() override { FreeAllStreams(app_.playback, app_.soundFonts); }

    void Add(const std::string& path) {
        if (app_.library.playlists.empty()) app_.library.playlists.push_back({"Album", {}});
        app_.library.playlists[0].songs.push_back({path, 0, 0, 0, kMp3});
        Recount(app_);
    }

    bool Plays(StreamSlot slot) { return BASS_ChannelIsActive(slot) == BASS_ACTIVE_PLAYING; }

    InlineWorkers inline_;
    TemporaryFolder folder_;
    AppState app_;
    PickerState picker_{11};
};

TEST_F(PlayNextTest, SlotsAlternateAndTheOldSongIsFreedWhenItsFadeIsOver) {
    Add(folder_.Write("t\xC3\xB6ne.mp3", ToneWav(400.0, 40.0)));
    app_.settings.FADE_DURATION_MS = 200;
    ASSERT_TRUE(PlayNext(app_, picker_));
    const StreamSlot first = CurrentHandle(app_.playback);
    EXPECT_EQ(first, app_.playback.musicStreamNext);
    EXPECT_FALSE(app_.playback.fade->fadeInProgress);  // there was nothing to fade out
    EXPECT_EQ(app_.playback.item.title, "t\xC3\xB6ne");
    EXPECT_TRUE(Eventually([&] { return Plays(first); }));

    ASSERT_TRUE(PlayNext(app_, picker_));
    const StreamSlot second = CurrentHandle(app_.playback);
    EXPECT_EQ(second, app_.playback.musicStream);
    EXPECT_TRUE(app_.playback.fade->fadeInProgress);
    EXPECT_TRUE(BASS_ChannelIsSliding(first, BASS_ATTRIB_VOL));
    EXPECT_TRUE(Eventually([&] { return !app_.playback.fade->fadeInProgress.load(); }));
    EXPECT_EQ(BASS_ChannelGetLength(first, BASS_POS_BYTE), BASS_QWORD_ERROR);  // freed
    EXPECT_TRUE(Plays(second));
    float volume = 0.0F;
    EXPECT_TRUE(BASS_ChannelGetAttribute(second, BASS_ATTRIB_VOL, &volume));
    EXPECT_FLOAT_EQ(volume, app_.settings.volumeLevel);
}

TEST_F(PlayNextTest, APlayNextWithinAFadeCutsTheOldStreamsAndItsWorkerHarmsNoLaterFade) {
    Add(folder_.Write("tone.mp3", ToneWav(400.0, 40.0)));
    app_.settings.FADE_DURATION_MS = 400;
    ASSERT_TRUE(PlayNext(app_, picker_));
    const StreamSlot first = CurrentHandle(app_.playback);
    ASSERT_TRUE(PlayNext(app_, picker_));
    const StreamSlot second = CurrentHandle(app_.playback);
    ASSERT_TRUE(PlayNext(app_, picker_));
    EXPECT_EQ(BASS_ChannelGetLength(first, BASS_POS_BYTE), BASS_QWORD_ERROR);
    EXPECT_EQ(BASS_ChannelGetLength(second, BASS_POS_BYTE), BASS_QWORD_ERROR);
    EXPECT_FALSE(app_.playback.fade->fadeInProgress);

    app_.settings.FADE_DURATION_MS = 60'000;  // longer than a busy machine holds up the test
    const StreamSlot third = CurrentHandle(app_.playback);
    ASSERT_TRUE(PlayNext(app_, picker_));
    std::this_thread::sleep_for(900ms);  // the first fade's worker has woken by now
    EXPECT_TRUE(app_.playback.fade->fadeInProgress);
    EXPECT_TRUE(Plays(third));
}

TEST_F(PlayNextTest, TheSongIsOverAtTheEndOfItsWindowAndNotWhilePaused) {
    Add(folder_.Write("tone.mp3", ToneWav(400.0, 4.0)));  // plays 2 s
    app_.settings.FADE_DURATION_MS = 100;
    ASSERT_TRUE(PlayNext(app_, picker_));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(Eventually([&] {
        const double positionSec = PositionSec(CurrentHandle(app_.playback));
        const bool over = IsSongOver(app_.playback);
        EXPECT_TRUE(over || positionSec < 2.1);
        return over;
    }));
    EXPECT_GT(std::chrono::steady_clock::now() - start, 1600ms);
    TogglePause(app_);
    EXPECT_FALSE(IsSongOver(app_.playback));
    TogglePause(app_);
    EXPECT_TRUE(IsSongOver(app_.playback));
}

TEST_F(PlayNextTest, ANearlyFinishedSongAndTheNextOneFadeInWhatIsLeft) {
    Add(folder_.Write("tone.mp3", ToneWav(400.0, 40.0)));
    app_.settings.FADE_DURATION_MS = 0;
    ASSERT_TRUE(PlayNext(app_, picker_));
    const StreamSlot first = CurrentHandle(app_.playback);
    const auto volumeOf = [](StreamSlot handle) {
        float value = -1.0F;
        BASS_ChannelGetAttribute(handle, BASS_ATTRIB_VOL, &value);
        return value;
    };
    ASSERT_TRUE(Eventually([&] { return volumeOf(first) > 0.0F; }));
    ASSERT_TRUE(SeekTo(app_.playback, 39.0));
    app_.settings.FADE_DURATION_MS = 60'000;
    ASSERT_TRUE(PlayNext(app_, picker_));
    const StreamSlot second = CurrentHandle(app_.playback);
    // Within twenty seconds, not sixty.
    EXPECT_TRUE(Eventually([&] { return volumeOf(second) == app_.settings.volumeLevel; }));
}

TEST_F(PlayNextTest, AFileThatIsShorterThanItSaysIsOverWhereItBreaksOff) {
    Add(folder_.Write("cut.mp3", ToneWav(400.0, 60.0).substr(0, 3 * 16000)));  // 3 s of 60
    app_.settings.songPlayDurationMax = 0;                                     // from its start to its end
    app_.settings.FADE_DURATION_MS = 100;
    ASSERT_TRUE(PlayNext(app_, picker_));
    EXPECT_FALSE(IsSongOver(app_.playback));
    EXPECT_TRUE(Eventually([&] { return IsSongOver(app_.playback); }));
}

TEST_F(PlayNextTest, TheHistoryIsWalkedBackAndForthAndThenLeft) {
    for (const char* name : {"a.mp3", "b.mp3", "c.mp3"}) Add(folder_.Write(name, ToneWav(400.0, 40.0)));
    app_.settings.FADE_DURATION_MS = 0;
    app_.settings.songPlayDurationMin = 5;
    app_.settings.songPlayDurationMax = 10;
    app_.selection.shuffle = false;
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(PlayNext(app_, picker_));
    const auto expectPlays = [&](const char* title, bool fromHistory) {
        EXPECT_EQ(app_.playback.item.title, title);
        EXPECT_EQ(app_.selection.previousSongMode, fromHistory);
        EXPECT_EQ(app_.playback.startSec == 0.0 && app_.playback.endSec == 40.0, fromHistory) << title;
    };
    ASSERT_TRUE(PlayPreviousSong(app_, picker_));
    expectPlays("b", true);
    ASSERT_TRUE(PlayPreviousSong(app_, picker_));
    expectPlays("a", true);
    EXPECT_FALSE(PlayPreviousSong(app_, picker_));
    expectPlays("a", true);
    ASSERT_TRUE(PlayNext(app_, picker_));
    expectPlays("b", true);
    ASSERT_TRUE(PlayNext(app_, picker_));
    EXPECT_EQ(app_.playback.item.title, "c");
    EXPECT_FALSE(app_.selection.previousSongMode);  // it was the last one
    ASSERT_TRUE(PlayNext(app_, picker_));
    expectPlays("a", false);  // the walk goes on
    EXPECT_EQ(app_.history.records.size(), 4U);

    // Where a file that is still open cannot be removed, it can be a moment later.
    ASSERT_TRUE(Eventually([&] {
        std::error_code isOpen;
        return std::filesystem::remove(folder_.Path() / "c.mp3", isOpen);
    }));
    ASSERT_TRUE(PlayPreviousSong(app_, picker_));
    expectPlays("b", true);
    ASSERT_TRUE(PlaySong(app_, picker_, 0, 0));
    EXPECT_FALSE(app_.selection.previousSongMode);
    EXPECT_EQ(app_.history.records.size(), 5U);
}

TEST_F(PlayNextTest, AnEmptyLibraryPlaysNothingAndIsNotAskedAgainAtOnce) {
    EXPECT_TRUE(IsSongOver(app_.playback));
    EXPECT_FALSE(PlayNext(app_, picker_));
    EXPECT_EQ(app_.playback.trouble, PlaybackTrouble::kNoMusic);
    EXPECT_EQ(CurrentHandle(app_.playback), 0U);
    EXPECT_FALSE(IsSongOver(app_.playback));
}

}  // namespace
}  // namespace hullrider
