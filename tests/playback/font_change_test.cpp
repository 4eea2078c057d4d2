#include <gtest/gtest.h>

#include "playback/play_next.h"
#include "playback/sound_fonts.h"
#include "playback/stream_slots.h"
#include "tests/console_capture.h"
#include "tests/playback/fake_audio.h"
#include "tests/playback/fake_clock.h"
#include "tests/playback/made_library.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

class FontChangeTest : public testing::Test {
protected:
    FontChangeTest() {
        app_.settings.FADE_DURATION_MS = 100;
        SetLibrary(app_, {{MadeSong(folder_.Write("song.mid", FakeSong(300.0)), kMidi)}});
        app_.soundFonts.soundFontFiles = {folder_.Write("1.sf2", "font"), folder_.Write("2.sf2", "font"),
                                          folder_.Write("3.sf2", "font")};
        SelectSoundFont(app_.soundFonts, app_.playback, 0);
    }
    ~FontChangeTest() override { FreeAllStreams(app_.playback, app_.soundFonts); }

    void PlayOne() {
        ASSERT_TRUE(PlayNext(app_, draws_));
        clock_.Advance(std::chrono::seconds(5));
    }

    const ConsoleCapture quiet_;
    FakeClock clock_;
    TemporaryFolder folder_;
    AppState app_;
    Draws draws_{4};
};

TEST_F(FontChangeTest, TheFontOfTheLoadedSlotChangesEveryFewSongsAndNoneIsLeftOver) {
    app_.settings.songsBeforeSoundfontChange = 3;
    int changes = 0;
    for (int i = 1; i <= 60; ++i) {
        const uint32_t main = app_.soundFonts.midiStreamFont, next = app_.soundFonts.midiStreamNextFont;
        PlayOne();
        const bool mainChanged = main != app_.soundFonts.midiStreamFont;
        const bool nextChanged = next != app_.soundFonts.midiStreamNextFont;
        EXPECT_EQ(mainChanged || nextChanged, i % 3 == 0) << i;
        // By now the slot that was loaded is the current one.
        if (mainChanged || nextChanged) {
            EXPECT_EQ(nextChanged, app_.playback.nextSlotActive) << i;
        }
        changes += mainChanged || nextChanged;
        EXPECT_EQ(FakeFonts(), 2U);
    }
    EXPECT_EQ(changes, 20);
    app_.settings.songsBeforeSoundfontChange = 0;
    const int32_t font = app_.soundFonts.currentSoundFont;
    for (int i = 0; i < 20; ++i) PlayOne();
    EXPECT_EQ(app_.soundFonts.currentSoundFont, font);
}

TEST_F(FontChangeTest, NextAndPreviousGoRound) {
    for (const int32_t index : {1, 2, 0, 1}) {
        NextSoundFont(app_);
        EXPECT_EQ(app_.soundFonts.currentSoundFont, index);
    }
    for (const int32_t index : {0, 2, 1}) {
        PreviousSoundFont(app_);
        EXPECT_EQ(app_.soundFonts.currentSoundFont, index);
    }
    EXPECT_EQ(FakeFonts(), 2U);
}

}  // namespace
}  // namespace hullrider
