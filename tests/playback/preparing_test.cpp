// The next item is prepared ahead: on an audio library that only keeps time, and a clock that the test moves.
#include <algorithm>
#include <set>

#include "playback/listening.h"
#include "playback/next_up.h"
#include "playback/sounding_start.h"
#include "playback/transport.h"
#include "tests/playback/engine_fixture.h"

namespace hullrider {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

class PreparingTest : public EngineTest {
protected:
    PreparingTest() {
        app_.settings.FADE_DURATION_MS = 1000;
        app_.settings.songPlayDurationMin = app_.settings.songPlayDurationMax = 30;
        app_.settings.historyDepth = 0;
    }

    // Lets time pass as the window does. Keeps the longest silence.
    void Pass(milliseconds time) {
        for (milliseconds passed{0}; passed < time; passed += 50ms) {
            clock_.Advance(50ms);
            PollPlayback(app_, picker_);
            silence_ = FakeLoudness() > 0.0F ? 0ms : silence_ + 50ms;
            longestSilence_ = std::max(longestSilence_, silence_);
        }
    }

    void StartFirst() {
        PlayNext(app_, picker_);
        Pass(100ms);
        ASSERT_NE(CurrentHandle(app_.playback), 0U);
        longestSilence_ = 0ms;
    }

    const std::string& Title() const { return app_.playback.item.title; }

    milliseconds silence_{0}, longestSilence_{0};
};

TEST_F(PreparingTest, TheNextItemIsOpenBeforeItIsDueAndLeavesNothingBehindUntilItStarts) {
    SetLibrary(app_, {{Write("a.mp3", FakeSong(300.0))}, {Write("b.mp3", FakeSong(300.0))}});
    app_.selection.shuffle = false;
    StartFirst();
    EXPECT_EQ(FakeChannels(), 1U);
    Pass(25s);
    ASSERT_NE(app_.playback.next, nullptr);
    EXPECT_TRUE(app_.playback.next->opening->IsDone());
    EXPECT_EQ(FakeChannels(), 2U);
    EXPECT_EQ(app_.history.records.size(), 1U);
    EXPECT_EQ(app_.selection.currentPlaylist, 0);
    EXPECT_TRUE(PlayNext(app_, picker_)) << "at once";
    EXPECT_EQ(Title(), "b");
    EXPECT_EQ(app_.history.records.size(), 2U);
    EXPECT_EQ(app_.selection.currentPlaylist, 1);
}

TEST_F(PreparingTest, WhatIsNoLongerWhatWouldBePickedIsDropped) {
    SetLibrary(app_, {{Write("a.mp3", FakeSong(300.0)), Write("b.xm", FakeSong(300.0))}});
    const std::function<void()> changes[] = {[&] { app_.weights.mp3 += 1; },
                                             [&] { app_.selection.favoritesFilter = kNoFavorites; },
                                             [&] { app_.selection.playMode = kPlaylistMode; },
                                             [&] { app_.selection.shuffle = false; },
                                             [&] { Recount(app_); },
                                             [&] { app_.settings.songPlayDurationMax = 31; }};
    for (const auto& change : changes) {
        app_.selection = {};
        app_.settings.songPlayDurationMax = 30;
        StartFirst();
        Pass(25s);
        ASSERT_NE(app_.playback.next, nullptr);
        const std::shared_ptr<NextUp> prepared = app_.playback.next;
        change();
        Pass(50ms);
        EXPECT_NE(app_.playback.next, prepared);
        Pass(100ms);
        EXPECT_LE(FakeChannels(), 2U) << "what was dropped is freed";
    }
}

TEST_F(PreparingTest, ADriveThatDoesNotAnswerForTenSecondsMakesNoSilence) {
    std::vector<Song> songs;
    for (int i = 0; i < 5; ++i) {
        songs.push_back(Write("slow/a/" + std::to_string(i) + ".mp3", FakeSong(300.0)));
    }
    SetLibrary(app_, {songs, {Write("fast/a/fast.mp3", FakeSong(300.0))}});
    app_.selection.playMode = kPlaylistMode;
    StartFirst();
    const StreamSlot old = CurrentHandle(app_.playback);
    {
        const FakeSlowDrive slow("slow");
        EXPECT_FALSE(PlayNext(app_, picker_));
        Pass(2s);
        EXPECT_EQ(CurrentHandle(app_.playback), old) << "the old item plays on";
        EXPECT_EQ(FakeSlideTarget(old), app_.settings.volumeLevel);
        Pass(8s);
        EXPECT_EQ(Title(), "fast") << "another drive was tried";
    }
    Pass(2s);
    EXPECT_LE(FakeChannels(), 1U) << "what the slow drive has opened at last is freed";
    EXPECT_EQ(longestSilence_, 0ms);
}

TEST_F(PreparingTest, WithoutAnythingElseASlowDriveIsWaitedFor) {
    SetLibrary(app_, {{Write("slow/a/1.mp3", FakeSong(20.0)), Write("slow/a/2.mp3", FakeSong(20.0))}});
    StartFirst();
    {
        const FakeSlowDrive slow("slow");
        Pass(17s);
        EXPECT_EQ(app_.history.records.size(), 1U);
    }
    Pass(2s);
    EXPECT_EQ(app_.history.records.size(), 2U);
    EXPECT_EQ(longestSilence_, 0ms);
}

TEST_F(PreparingTest, AWindowNeitherBeginsNorLiesInSilence) {
    const double kLengthSec = 120.0, kQuietFrom = 30.0, kQuietTo = 70.0;
    SetLibrary(app_, {{Write("a.mp3", FakeSong(kLengthSec, 10'000, kQuietFrom, kQuietTo))}});
    app_.settings.songPlayDurationMin = app_.settings.songPlayDurationMax = 20;
    int moved = 0;
    for (int i = 0; i < 40; ++i) {
        StartFirst();
        const double startSec = app_.playback.startSec;
        EXPECT_FALSE(startSec >= kQuietFrom && startSec < kQuietTo - kLongestSilentStartSec) << startSec;
        moved += startSec >= kQuietTo - kLongestSilentStartSec && startSec < kQuietTo + 0.1;
        EXPECT_LE(app_.playback.endSec, kLengthSec);
        Pass(22s);
        EXPECT_LE(longestSilence_, 0ms);
        EXPECT_GE(app_.history.records.size(), static_cast<size_t>(i + 1));
    }
    EXPECT_GT(moved, 4) << "a third of the starts would be silent";
}

TEST_F(PreparingTest, ASongThatFallsSilentGivesWayWithinTwoSecondsAndASilentOneIsPassedOver) {
    SetLibrary(app_, {{Write("a.mp3", FakeSong(200.0, 10'000, 10.0, 190.0)), Write("silent.mp3", FakeSong(200.0, 0)),
                       Write("b.mp3", FakeSong(200.0))}});
    app_.settings.songPlayDurationMax = 0;
    app_.selection.shuffle = false;
    StartFirst();
    EXPECT_EQ(Title(), "a");
    Pass(11'000ms);
    EXPECT_EQ(Title(), "a");
    Pass(900ms);
    EXPECT_EQ(Title(), "b");
    EXPECT_EQ(app_.statistics.thisRun.skips, 0) << "nobody has skipped it";
}

TEST_F(PreparingTest, WholeSongsFollowEachOtherAndNoneBeginsAgain) {
    SetLibrary(app_, {{Write("a.mp3", FakeSong(50.0)), Write("b.xm", FakeSong(40.0))}});
    app_.settings.songPlayDurationMax = 0;
    app_.settings.FADE_DURATION_MS = 0;
    app_.selection.shuffle = false;
    StartFirst();
    for (int i = 0; i < 10; ++i) {
        const StreamSlot handle = CurrentHandle(app_.playback);
        const double lengthSec = app_.playback.songLengthSec;
        clock_.Advance(milliseconds(static_cast<int>(lengthSec * 1000.0) - 5000));
        PollPlayback(app_, picker_);
        clock_.Advance(5000ms + 170ms);  // the poll comes late
        EXPECT_EQ(FakeLoudness(), 0.0F) << "it has ended, and has not begun again";
        PollPlayback(app_, picker_);
        EXPECT_NE(CurrentHandle(app_.playback), handle);
    }
}

TEST_F(PreparingTest, WindowsShorterThanTheFadeComeToFullVolume) {
    SetLibrary(app_, {{Write("a.mp3", FakeSong(300.0)), Write("b.mp3", FakeSong(300.0))}});
    app_.settings.FADE_DURATION_MS = 8000;
    app_.settings.songPlayDurationMin = app_.settings.songPlayDurationMax = 6;
    StartFirst();
    for (int i = 0; i < 10; ++i) {
        const StreamSlot handle = CurrentHandle(app_.playback);
        float loudest = 0.0F;
        while (CurrentHandle(app_.playback) == handle) {
            Pass(50ms);
            loudest = std::max(loudest, FakeVolume(handle));
        }
        EXPECT_NEAR(loudest, app_.settings.volumeLevel, 0.02F);
        EXPECT_GT(FakeVolume(handle), 0.0F) << "it fades, it is not cut";
    }
}

TEST_F(PreparingTest, BrokenAndMissingSongsArePassedOverAndRememberedAndTheFilesOfAWholeDriveTooAtOnce) {
    std::vector<Song> songs;
    for (int i = 0; i < 200; ++i) songs.push_back(MadeSong(folder_.At("away/a/" + std::to_string(i) + ".mp3"), kMp3));
    songs.push_back(Write("a/broken.mp3", "no music"));
    songs.push_back(MadeSong(folder_.At("a/missing.mp3"), kMp3));
    songs.push_back(Write("a/good.mp3", FakeSong(300.0)));
    SetLibrary(app_, {songs});
    for (int i = 0; i < 8; ++i) {
        PlayNext(app_, picker_);
        Pass(2s);
        EXPECT_EQ(Title(), "good");
    }
    const std::string errors = console_->Errors();
    const std::string line = "Cannot play " + songs[200].songPath + "\n";
    EXPECT_NE(errors.find(line), std::string::npos);
    EXPECT_EQ(errors.find(line), errors.rfind(line)) << "once";
    EXPECT_EQ(errors.find("away"), std::string::npos) << "missing files are passed over without a word";
    EXPECT_EQ(app_.history.records.size(), 8U);
}

TEST_F(PreparingTest, AmongHundredsOfBrokenSongsTheFewGoodOnesAreFoundAndThenDrawnFirst) {
    std::vector<Song> songs;
    for (int i = 0; i < 500; ++i) songs.push_back(Write("a/" + std::to_string(i) + ".mp3", "no music"));
    for (const char* name : {"a/good1.mp3", "a/good2.mp3"}) songs.push_back(Write(name, FakeSong(300.0)));
    SetLibrary(app_, {songs});
    PlayNext(app_, picker_);
    Pass(60s);
    EXPECT_EQ(Title().substr(0, 4), "good");
    EXPECT_EQ(app_.playback.trouble, PlaybackTrouble::kNone);
    std::set<std::string> heard;
    for (int i = 0; i < 12; ++i) {
        PlayNext(app_, picker_);
        Pass(60s);
        heard.insert(Title());
    }
    EXPECT_EQ(heard.size(), 2U);
    const std::string errors = console_->Errors();
    int failures = 0;
    for (size_t at = errors.find("Cannot play "); at != std::string::npos; at = errors.find("Cannot play ", at + 1)) {
        ++failures;
    }
    EXPECT_LE(failures, 500) << "none is tried twice";
}

TEST_F(PreparingTest, ADriveThatIsBackIsHeardWithTheNextRequest) {
    SetLibrary(app_, {{MadeSong(folder_.At("drive/a/1.mp3"), kMp3)}});
    PlayNext(app_, picker_);
    Pass(2s);
    EXPECT_EQ(CurrentHandle(app_.playback), 0U);
    folder_.Write("drive/a/1.mp3", FakeSong(300.0));
    PlayNext(app_, picker_);
    Pass(100ms);
    EXPECT_NE(CurrentHandle(app_.playback), 0U);
}

TEST_F(PreparingTest, WithNothingElseToPlayTheOldSongGoesRound) {
    SetLibrary(app_, {{Write("a.mp3", FakeSong(40.0))}});
    StartFirst();
    SetLibrary(app_, {{Write("broken.mp3", "no music")}});
    Pass(120s);
    EXPECT_EQ(app_.playback.trouble, PlaybackTrouble::kNothingPlayable);
    EXPECT_LE(longestSilence_, 100ms);
}

TEST_F(PreparingTest, PreviousSongPassesOverWhatIsBrokenAndOutOfSilencePlaysAnything) {
    app_.selection.shuffle = false;
    SetLibrary(app_,
               {{Write("a.mp3", FakeSong(300.0)), Write("b.mp3", FakeSong(300.0)), Write("c.mp3", FakeSong(300.0))}});
    PlayPreviousSong(app_, picker_);
    Pass(100ms);
    EXPECT_EQ(Title(), "a") << "there is no earlier one";
    for (int i = 0; i < 2; ++i) PlayNext(app_, picker_), Pass(2s);
    EXPECT_EQ(Title(), "c");
    folder_.Write("b.mp3", "broken meanwhile");
    app_.history.records[0].startedAt = 7;
    PlayPreviousSong(app_, picker_);
    Pass(2s);
    EXPECT_EQ(Title(), "a");
    EXPECT_EQ(app_.history.cursor, 0U);
    EXPECT_EQ(app_.history.records[0].startedAt, 7) << "when it was first heard";
    EXPECT_EQ(app_.history.records.size(), 3U);
}

TEST_F(PreparingTest, APauseIsNotTimeThatWasHeardWhateverComesAfterIt) {
    SetLibrary(app_, {{Write("a.mp3", FakeSong(300.0))}});
    StartFirst();
    Pass(10s);
    TogglePause(app_);
    Pass(60s);
    PlayNext(app_, picker_);
    Pass(100ms);
    EXPECT_NEAR(app_.statistics.thisRun.byType[kMp3].seconds, 10.0, 0.2);
}

TEST_F(PreparingTest, APlayCountsAfterFiveSecondsOrHalfOfItsWindowAndASkipDoesNot) {
    SetLibrary(app_, {{Write("a.mp3", FakeSong(300.0)), Write("b.mp3", FakeSong(300.0))}});
    const auto plays = [&] { return app_.statistics.thisRun.byType[kMp3].count; };
    StartFirst();
    for (int i = 0; i < 5; ++i) {
        Pass(4s);
        TogglePause(app_);
        Pass(10s);
        TogglePause(app_);
        PlayNext(app_, picker_);
    }
    EXPECT_EQ(plays(), 0);
    EXPECT_TRUE(app_.playCounts.byPath.empty());
    Pass(6s);
    EXPECT_EQ(plays(), 1);
    EXPECT_EQ(app_.playCounts.byPath[app_.playback.item.address], 1);
    Pass(10s);
    EXPECT_EQ(plays(), 1) << "once";

    app_.settings.songPlayDurationMin = app_.settings.songPlayDurationMax = 4;
    PlayNext(app_, picker_);
    Pass(2500ms);
    EXPECT_EQ(plays(), 2);
}

TEST_F(PreparingTest, ARequestForNoSongSaysSoAndAnotherOneComes) {
    SetLibrary(app_, {{Write("a.mp3", FakeSong(300.0))}});
    PlaySong(app_, picker_, 99, 0);
    PlaySong(app_, picker_, 0, -1);
    Pass(100ms);
    EXPECT_EQ(Title(), "a");
    const std::string output = console_->Output();
    EXPECT_NE(output.find("Error: Invalid playlist index.\n"), std::string::npos);
    EXPECT_NE(output.find("Error: Invalid song index.\n"), std::string::npos);
}

}  // namespace
}  // namespace hullrider
