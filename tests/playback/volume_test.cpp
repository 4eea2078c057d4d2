// On an audio library that only keeps time, and a clock that the test moves.
#include "playback/volume.h"

#include <cmath>

#include "audio/bass.h"
#include "playback/stream_loudness.h"
#include "playback/transport.h"
#include "tests/inline_workers.h"
#include "tests/playback/engine_fixture.h"

namespace hullrider {
namespace {

using namespace std::chrono_literals;

class VolumeTest : public EngineTest {
protected:
    VolumeTest() {
        app_.settings.FADE_DURATION_MS = 8000;
        app_.playback.volume->realTimeVolume = true;
    }

    StreamSlot PlaySongOfLevel(int level) {
        SetLibrary(app_, {{Write("song.mp3", FakeSong(300.0, level))}});
        EXPECT_TRUE(PlayNext(app_, picker_));
        return CurrentHandle(app_.playback);
    }

    // One that nothing is known of when it starts.
    StreamSlot PlayUnmeasured(int level) {
        PlaySongOfLevel(10'000);
        CutStreamsBut(app_.playback, 0);
        const std::string path = folder_.Write("unmeasured.mp3", FakeSong(300.0, level));
        const StreamSlot song = BASS_StreamCreateFile(false, path.c_str(), 0, 0, BASS_SAMPLE_FLOAT);
        BASS_ChannelSetAttribute(song, BASS_ATTRIB_VOL, 0.0F);
        BASS_ChannelPlay(song, false);
        (app_.playback.nextSlotActive ? app_.playback.musicStreamNext : app_.playback.musicStream) = song;
        RestartLoudness(app_.playback, song);
        FadeInToTarget(app_, song, std::nullopt, app_.settings.FADE_DURATION_MS);
        StartVolumeAdjustment(app_.playback.volume, app_.settings.FADE_DURATION_MS);
        return song;
    }

    // Lets time pass with the timers of the level meter and of the poll in it.
    void Pass(std::chrono::milliseconds time) {
        for (std::chrono::milliseconds passed{0}; passed < time; passed += 250ms) {
            clock_.Advance(250ms);
            SampleLoudness(app_.playback);
            CorrectVolumeOnceHeard(app_.playback);
        }
    }

    InlineWorkers inline_;
};

TEST_F(VolumeTest, WithoutFollowingASongFadesInToTheUsersVolume) {
    app_.playback.volume->realTimeVolume = false;
    app_.settings.volumeLevel = 0.6F;
    const StreamSlot song = PlaySongOfLevel(10'000);
    EXPECT_EQ(FakeVolume(song), 0.0F);
    Pass(4s);
    EXPECT_NEAR(FakeVolume(song), 0.3F, 0.001F);
    Pass(4s);
    EXPECT_EQ(FakeVolume(song), 0.6F);
    EXPECT_TRUE(SetVolumeLevel(app_, 0.2F));
    EXPECT_EQ(FakeVolume(song), 0.2F);
}

TEST_F(VolumeTest, MuteSilencesEverySongUntilItEndsAndLeavesTheVolumeSet) {
    for (const bool follows : {false, true}) {
        app_.playback.volume->realTimeVolume = follows;
        SetVolumeLevel(app_, 0.6F);
        const StreamSlot song = PlaySongOfLevel(30'000);
        Pass(12s);
        const float before = FakeVolume(song);
        EXPECT_GT(before, 0.0F);
        ToggleMute(app_);
        Pass(1s);
        EXPECT_EQ(FakeVolume(song), 0.0F);
        EXPECT_NEAR(UserVolume(app_), 0.6F, 1e-6F);
        EXPECT_NEAR(NormalVolume(app_), 0.6F, 1e-6F) << "as saved";

        PlayNext(app_, picker_);
        const StreamSlot next = CurrentHandle(app_.playback);
        ASSERT_NE(next, song);
        Pass(12s);
        EXPECT_EQ(FakeVolume(next), 0.0F);
        TogglePause(app_);
        TogglePause(app_);
        Pass(1s);
        EXPECT_EQ(FakeVolume(next), 0.0F);
        ToggleMute(app_);
        Pass(1s);
        EXPECT_NEAR(FakeVolume(next), before, 0.01F);

        // Turning it up, or a preset, ends it too.
        ToggleMute(app_);
        SetVolumeLevel(app_, 0.3F);
        EXPECT_FALSE(app_.playback.volume->muted);
        Pass(1s);
        EXPECT_GT(FakeVolume(next), 0.0F);
        ToggleMute(app_);
        ToggleHighLowVolume(app_);
        Pass(2s);
        EXPECT_GT(FakeVolume(next), 0.0F);
        app_.playback.volumeMode = kNormalVolume;
        app_.playback.savedVolume = -1.0F;
    }
}

TEST_F(VolumeTest, MuteEndsAFadeAtOnce) {
    app_.playback.volume->realTimeVolume = false;
    const StreamSlot old = PlaySongOfLevel(10'000);
    Pass(10s);
    PlayNext(app_, picker_);
    Pass(1s);
    EXPECT_GT(FakeLoudness(), 0.0F);
    ToggleMute(app_);
    Pass(250ms);
    EXPECT_EQ(FakeLoudness(), 0.0F) << FakeVolume(old);
}

TEST_F(VolumeTest, WithFollowingASongIsMeasuredFadedToHalfAndThenCorrected) {
    struct Case {
        const char* what;
        int level;
        float wanted, half, whole;  // the volume setting, then the two volumes that it leads to
    };
    const Case cases[] = {{"loud", 28'000, 0.4F, 0.25F, 0.5F},
                          {"quiet, at most full volume", 1000, 0.4F, 0.5F, 1.0F},
                          {"stalled", -1, 0.4F, 0.1F, 1.0F},
                          {"silent", 0, 0.4F, 0.1F, 1.0F},
                          {"no valid target", 28'000, 1.5F, 0.0F, 0.0F}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        app_.settings.highVolume = test.wanted;
        app_.playback.volumeMode = kHighVolume;
        CutStreamsBut(app_.playback, 0);
        const StreamSlot song = PlayUnmeasured(test.level);
        Pass(2s);  // 0.5 s are enough to measure, 1.5 s to give up
        EXPECT_NEAR(FakeSlideTarget(song), test.half, 0.001F);
        EXPECT_EQ(app_.playback.volume->levelUnknown, test.half == 0.1F);
        Pass(750ms);  // 2.5 s after the start
        EXPECT_NEAR(FakeSlideTarget(song), test.whole, 0.001F);
        EXPECT_EQ(app_.playback.volume->adjustedVolume, FakeSlideTarget(song));
        Pass(4s);
        EXPECT_NEAR(FakeVolume(song), test.whole, 0.001F);
    }
}

TEST_F(VolumeTest, APreparedSongComesInAtTheLoudnessOfItsFirstSecondsAtOnce) {
    app_.playback.volume->targetRms = 14'000.0F;
    const StreamSlot song = PlaySongOfLevel(28'000);
    EXPECT_NEAR(FakeSlideTarget(song), 0.25F, 0.001F);
    Pass(2750ms);
    EXPECT_NEAR(FakeSlideTarget(song), 0.5F, 0.001F);
}

TEST_F(VolumeTest, TheCorrectionIsMadeAfterACutToo) {
    app_.playback.volume->targetRms = 14'000.0F;
    PlaySongOfLevel(28'000);
    for (int i = 0; i < 2; ++i) {
        clock_.Advance(200ms);
        ASSERT_TRUE(PlayNext(app_, picker_));
    }
    Pass(10s);
    EXPECT_NEAR(FakeVolume(CurrentHandle(app_.playback)), 0.5F, 0.001F);
}

TEST_F(VolumeTest, ASongThatIsSilentAtFirstIsCorrectedOnceItIsHeard) {
    for (const bool volumeIsChanged : {false, true}) {
        app_.playback.volume->targetRms = 14'000.0F;
        PlaySongOfLevel(10'000);
        CutStreamsBut(app_.playback, 0);
        SetLibrary(app_, {{Write("late.mp3", FakeSong(300.0, 28'000, 0.9, 4.0))}});
        app_.settings.songPlayDurationMax = 0;  // from its start
        ASSERT_TRUE(PlayNext(app_, picker_));
        const StreamSlot song = CurrentHandle(app_.playback);
        RestartLoudness(app_.playback, song);
        clock_.Advance(1s);
        if (volumeIsChanged) SetVolumeLevel(app_, 0.4F);
        Pass(12s);
        EXPECT_NEAR(20.0 * std::log10(FakeVolume(song) / 0.5), 0.0, 0.5);
    }
}

TEST_F(VolumeTest, ACorrectionThatWasDueIsNotMadeToTheNextSong) {
    PlaySongOfLevel(10'000);
    app_.playback.correctionDue = PlayNow() + 1s;
    const StreamSlot song = PlaySongOfLevel(28'000);
    const float target = FakeSlideTarget(song);
    clock_.Advance(1500ms);
    CorrectVolumeOnceHeard(app_.playback);
    EXPECT_EQ(FakeSlideTarget(song), target);
}

TEST_F(VolumeTest, WhoSwitchesFollowingOffKeepsTheVolume) {
    app_.playback.volume->targetRms = 14'000.0F;
    const StreamSlot song = PlaySongOfLevel(28'000);
    Pass(1s);
    SetLoudnessFollowing(app_, false);
    const float volume = FakeVolume(song);
    Pass(10s);
    EXPECT_EQ(FakeVolume(song), volume);
    EXPECT_NEAR(volume, 0.4F, 0.001F);
}

TEST_F(VolumeTest, APauseHoldsBothItemsOfAFadeAndBothGoOn) {
    app_.playback.volume->realTimeVolume = false;
    const StreamSlot first = PlaySongOfLevel(10'000);
    Pass(10s);
    ASSERT_TRUE(PlayNext(app_, picker_));
    const StreamSlot second = CurrentHandle(app_.playback);
    Pass(4s);
    TogglePause(app_);
    EXPECT_EQ(FakeLoudness(), 0.0F);
    const float firstVolume = FakeVolume(first), secondVolume = FakeVolume(second);
    EXPECT_NEAR(firstVolume, 0.25F, 0.01F);
    Pass(60s);
    TogglePause(app_);
    EXPECT_EQ(FakeVolume(first), firstVolume);
    EXPECT_EQ(FakeVolume(second), secondVolume);
    Pass(3500ms);
    EXPECT_GT(FakeVolume(first), 0.0F);
    Pass(1s);
    EXPECT_EQ(FakeVolume(first), -1.0F) << "freed when its fade was over";
    EXPECT_EQ(FakeVolume(second), 0.5F);
}

TEST_F(VolumeTest, AMeasurementOfASongThatWasLeftDoesNotBringItBack) {
    app_.playback.volume->targetRms = 14'000.0F;
    const StreamSlot first = PlaySongOfLevel(28'000);
    clock_.Advance(200ms);
    ASSERT_TRUE(PlayNext(app_, picker_));
    EXPECT_EQ(FakeSlideTarget(first), 0.0F);
    Pass(2s);
    EXPECT_EQ(FakeSlideTarget(first), 0.0F);
    EXPECT_GT(FakeVolume(CurrentHandle(app_.playback)), 0.0F);
}

TEST_F(VolumeTest, TheAverageFollowsWithinSecondsAndStartsAnewWithEachSong) {
    PlaySongOfLevel(20'000);
    Pass(250ms);
    EXPECT_NEAR(app_.playback.volume->averageMusicRms, 20'000.0F, 1.0F);
    CutStreamsBut(app_.playback, 0);
    PlaySongOfLevel(5'000);
    EXPECT_EQ(app_.playback.volume->averageMusicRms, 0.0F);
    Pass(10s);
    EXPECT_NEAR(app_.playback.volume->averageMusicRms, 5'000.0F, 1.0F);
    TogglePause(app_);
    Pass(10s);
    EXPECT_NEAR(app_.playback.volume->averageMusicRms, 5'000.0F, 1.0F);
}

TEST_F(VolumeTest, TheVolumesOfTheToggleTakeTurns) {
    struct Case {
        bool latched;
        std::vector<float> volumes;
    };
    for (const Case& test : {Case{false, {0.8F, 0.1F, 0.8F, 0.1F}}, Case{true, {0.8F, 0.1F, 0.5F, 0.8F}}}) {
        app_.playback.volume->realTimeVolume = false;
        app_.playback.volumeMode = kNormalVolume;
        app_.playback.savedVolume = -1.0F;
        app_.settings = {};
        app_.settings.toggleLatchMode = test.latched;
        const StreamSlot song = PlaySongOfLevel(10'000);
        for (const float volume : test.volumes) {
            ToggleHighLowVolume(app_);
            EXPECT_EQ(FakeSlideTarget(song), volume);
            EXPECT_EQ(app_.settings.volumeLevel, volume);
        }
        CutStreamsBut(app_.playback, 0);
    }
}

TEST_F(VolumeTest, AppliedVolumesFollowTheLoudnessAndGoIntoThePreset) {
    const StreamSlot song = PlaySongOfLevel(28'000);
    app_.settings.volumeLevel = 0.3F;
    app_.playback.volume->averageMusicRms = 0.0F;
    ApplyVolume(app_);  // not known yet how loud it is
    EXPECT_EQ(FakeVolume(song), 1.0F);
    EXPECT_EQ(app_.settings.volumeLevel, 1.0F);

    app_.playback.volume->averageMusicRms = 28'000.0F;
    app_.playback.volume->targetRms = 7'000.0F;
    ApplyVolume(app_);
    EXPECT_EQ(FakeVolume(song), 0.25F);
    EXPECT_EQ(app_.settings.volumeLevel, 0.25F);
    app_.playback.volume->averageMusicRms = std::nanf("");
    ApplyVolume(app_);
    EXPECT_EQ(FakeVolume(song), 1.0F);

    app_.playback.volume->averageMusicRms = 28'000.0F;
    app_.playback.volumeMode = kLowVolume;
    EXPECT_TRUE(SetVolumeLevel(app_, 0.4F));
    EXPECT_EQ(app_.settings.lowVolume, 0.4F);
    EXPECT_NEAR(FakeVolume(song), 0.5F, 0.001F);
}

TEST_F(VolumeTest, AVolumeOutsideItsRangeIsRefused) {
    for (const float volume : {-0.1F, 1.1F, std::nanf("")}) {
        EXPECT_FALSE(SetVolumeLevel(app_, volume));
        EXPECT_EQ(TargetRmsOf(volume), -1.0F);
    }
    EXPECT_EQ(app_.settings.volumeLevel, 0.5F);
    EXPECT_TRUE(console_->Errors().starts_with("Volume level must be between 0.0 and 1.0\n"));
}

}  // namespace
}  // namespace hullrider
