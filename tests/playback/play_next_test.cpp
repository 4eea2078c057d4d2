// Plays through the null output in real time, on songs of a pure tone that the test writes.
#include "playback/play_next.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <thread>

#include "audio/bass.h"
#include "playback/stream_slots.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

using namespace std::chrono_literals;

// A mono 16-bit WAV file of a tone. The player goes by what is in a file, not by its name.
std::string ToneFile(double lengthSec) {
    constexpr uint32_t kRate = 8000;
    const auto frames = static_cast<uint32_t>(lengthSec * kRate);
    std::string file;
    const auto put = [&](uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) file += static_cast<char>(value >> (8 * i) & 0xFF);
    };
    file += "RIFF";
    put(36 + 2 * frames, 4);
    file += "WAVEfmt ";
    put(16, 4), put(1, 2), put(1, 2), put(kRate, 4), put(2 * kRate, 4), put(2, 2), put(16, 2);
    file += "data";
    put(2 * frames, 4);
    for (uint32_t i = 0; i < frames; ++i) {
        put(static_cast<uint32_t>(static_cast<int32_t>(8000 * std::sin(i * 0.3))), 2);
    }
    return file;
}

class PlayNextTest : public testing::Test {
protected:
    PlayNextTest() { BASS_Init(0, 44100, 0, nullptr, nullptr); }
    ~PlayNextTest() override { FreeAllStreams(app_.playback, app_.soundFonts); }

    void Add(const std::string& path) {
        if (app_.library.playlists.empty()) app_.library.playlists.push_back({"Album", {}});
        app_.library.playlists[0].songs.push_back({path, 0, 0, 0, kMp3});
    }

    bool Plays(StreamSlot slot) { return BASS_ChannelIsActive(slot) == BASS_ACTIVE_PLAYING; }

    static bool Eventually(const std::function<bool()>& claim) {
        for (int i = 0; i < 300 && !claim(); ++i) std::this_thread::sleep_for(10ms);
        return claim();
    }

    TemporaryFolder folder_;
    AppState app_;
    Random random_{11};
};

TEST_F(PlayNextTest, SlotsAlternateAndTheOldSongIsFreedWhenItsFadeIsOver) {
    Add(folder_.Write("t\xC3\xB6ne.mp3", ToneFile(40.0)));
    app_.settings.FADE_DURATION_MS = 200;
    ASSERT_TRUE(PlayNext(app_, random_));
    const StreamSlot first = CurrentHandle(app_.playback);
    EXPECT_EQ(first, app_.playback.musicStreamNext);
    EXPECT_FALSE(app_.playback.fade->fadeInProgress);  // there was nothing to fade out
    EXPECT_EQ(app_.playback.currentTitle, "t\xC3\xB6ne");
    EXPECT_TRUE(Eventually([&] { return Plays(first); }));

    ASSERT_TRUE(PlayNext(app_, random_));
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
    Add(folder_.Write("tone.mp3", ToneFile(40.0)));
    app_.settings.FADE_DURATION_MS = 400;
    ASSERT_TRUE(PlayNext(app_, random_));
    const StreamSlot first = CurrentHandle(app_.playback);
    ASSERT_TRUE(PlayNext(app_, random_));
    const StreamSlot second = CurrentHandle(app_.playback);
    ASSERT_TRUE(PlayNext(app_, random_));
    EXPECT_EQ(BASS_ChannelGetLength(first, BASS_POS_BYTE), BASS_QWORD_ERROR);
    EXPECT_EQ(BASS_ChannelGetLength(second, BASS_POS_BYTE), BASS_QWORD_ERROR);
    EXPECT_FALSE(app_.playback.fade->fadeInProgress);

    app_.settings.FADE_DURATION_MS = 2000;
    const StreamSlot third = CurrentHandle(app_.playback);
    ASSERT_TRUE(PlayNext(app_, random_));
    std::this_thread::sleep_for(900ms);  // the first fade's worker has woken by now
    EXPECT_TRUE(app_.playback.fade->fadeInProgress);
    EXPECT_TRUE(Plays(third));
}

TEST_F(PlayNextTest, ABadSongIsPassedOverAndWhatPlaysGoesOnWhenNothingElseCan) {
    Add(folder_.Write("tone.mp3", ToneFile(40.0)));
    Add(folder_.Write("empty.mp3", ""));
    Add(folder_.Write("text.mp3", "this is not music\n"));
    Add(folder_.At("gone.mp3"));
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(PlayNext(app_, random_));
        EXPECT_EQ(app_.playback.currentTitle, "tone");
    }
    const StreamSlot playing = CurrentHandle(app_.playback);
    app_.library.playlists[0].songs.erase(app_.library.playlists[0].songs.begin());
    EXPECT_FALSE(PlayNext(app_, random_));
    EXPECT_EQ(app_.playback.trouble, PlaybackTrouble::kNothingPlayable);
    EXPECT_EQ(CurrentHandle(app_.playback), playing);
    EXPECT_TRUE(Eventually([&] { return Plays(playing); }));
}

TEST_F(PlayNextTest, TheSongIsOverAtTheEndOfItsWindowAndNotWhilePaused) {
    Add(folder_.Write("tone.mp3", ToneFile(4.0)));  // plays 2 s
    app_.settings.FADE_DURATION_MS = 100;
    ASSERT_TRUE(PlayNext(app_, random_));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(IsSongOver(app_.playback));
    EXPECT_TRUE(Eventually([&] { return IsSongOver(app_.playback); }));
    const std::chrono::duration<double> played = std::chrono::steady_clock::now() - start;
    EXPECT_NEAR(played.count(), 2.0, 0.4);
    TogglePause(app_.playback);
    EXPECT_FALSE(IsSongOver(app_.playback));
    TogglePause(app_.playback);
    EXPECT_TRUE(IsSongOver(app_.playback));
}

TEST_F(PlayNextTest, AnEmptyLibraryPlaysNothingAndIsNotAskedAgainAtOnce) {
    EXPECT_TRUE(IsSongOver(app_.playback));
    EXPECT_FALSE(PlayNext(app_, random_));
    EXPECT_EQ(app_.playback.trouble, PlaybackTrouble::kNoMusic);
    EXPECT_EQ(CurrentHandle(app_.playback), 0U);
    EXPECT_FALSE(IsSongOver(app_.playback));
}

}  // namespace
}  // namespace hullrider
