#include "playback/next_item.h"
#include "playback/next_up.h"
#include "playback/sound_fonts.h"
#include "tests/error_boxes.h"
#include "tests/inline_workers.h"
#include "tests/playback/engine_fixture.h"

namespace hullrider {
namespace {

class FontChangeTest : public EngineTest {
protected:
    FontChangeTest() {
        app_.settings.FADE_DURATION_MS = 100;
        SetLibrary(app_, {{Write("song.mid", FakeSong(300.0))}});
        app_.soundFonts.soundFontFiles = {folder_.Write("1.sf2", "font"), folder_.Write("2.sf2", "font"),
                                          folder_.Write("3.sf2", "font")};
        SelectSoundFont(app_.soundFonts, app_.playback, 0);
    }

    void PlayOne() {
        ASSERT_TRUE(PlayNext(app_, picker_));
        clock_.Advance(std::chrono::seconds(5));
    }

    InlineWorkers inline_;
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

TEST_F(FontChangeTest, ASongThatCutsOthersOffDoesNotCount) {
    app_.settings.songsBeforeSoundfontChange = 3;
    PlayOne();
    PlayOne();
    const uint32_t main = app_.soundFonts.midiStreamFont, next = app_.soundFonts.midiStreamNextFont;
    app_.soundFonts.songsSinceSoundfontChange = 1;
    for (int i = 0; i < 2; ++i) ASSERT_TRUE(PlayNext(app_, picker_));  // the second one ends the fade of the first
    EXPECT_EQ(app_.soundFonts.songsSinceSoundfontChange, 2);
    EXPECT_EQ(std::pair(app_.soundFonts.midiStreamFont, app_.soundFonts.midiStreamNextFont), std::pair(main, next));
    clock_.Advance(std::chrono::seconds(5));
    PlayOne();
    EXPECT_EQ(app_.soundFonts.songsSinceSoundfontChange, 0);
}

TEST_F(FontChangeTest, AFontThatCameWithADroppedItemIsFreed) {
    app_.settings.songsBeforeSoundfontChange = 1;
    ASSERT_TRUE(OpenNext(app_, picker_, {}, ChooseNextItem(app_, picker_, {})));
    EXPECT_EQ(FakeFonts(), 3U);
    DropNext(app_.playback);
    EXPECT_EQ(FakeFonts(), 2U);
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

TEST_F(FontChangeTest, WithoutFontsEveryStepSaysSo) {
    app_.soundFonts.soundFontFiles.clear();
    for (void (*step)(AppState&) : {NextSoundFont, PreviousSoundFont}) {
        const ErrorBoxes boxes;
        step(app_);
        EXPECT_EQ(ErrorBoxes::last, "No soundfont files found.");
    }
}

TEST_F(FontChangeTest, AnAutomaticChangeThatFailsIsPrintedAndKeepsTheOldFont) {
    const std::string good = folder_.At("1.sf2"), bad = folder_.Write("bad.sf2", "text");
    const uint32_t main = app_.soundFonts.midiStreamFont, next = app_.soundFonts.midiStreamNextFont;
    struct Case {
        const std::string& file;
        const char* song;  // only one that ends in .mid takes fonts
        std::string printed;
    };
    const Case table[] = {{bad, "a.mid", "Error loading sound font from " + bad + ": 41\n"},
                          {bad, "a.mid", "Error loading sound font from " + bad + ": 41\n"},
                          {good, "a.kar", "Error setting sound font for midiStreamNext: 37\n"},
                          {good, "a.kar", "Error setting sound font for midiStream: 37\n"}};
    app_.settings.songsBeforeSoundfontChange = 1;
    for (const Case& test : table) {
        app_.soundFonts.soundFontFiles = {test.file};
        SetLibrary(app_, {{MadeSong(folder_.Write(test.song, FakeSong(300.0)), kMidi)}});
        console_.reset();
        console_.emplace();
        PlayOne();
        EXPECT_EQ(console_->Errors(), test.printed);
        EXPECT_EQ(app_.soundFonts.midiStreamFont, main);
        EXPECT_EQ(app_.soundFonts.midiStreamNextFont, next);
        EXPECT_EQ(FakeFonts(), 2U);  // the new one is freed
    }
}

}  // namespace
}  // namespace hullrider
