#include "playback/sound_fonts.h"

#include <gtest/gtest.h>

#include "audio/bass.h"
#include "tests/error_boxes.h"
#include "tests/temporary_folder.h"

namespace hullrider {

TEST(SoundFonts, OnlyFontFilesOfTheFolderItselfAreFoundInOrder) {
    const TemporaryFolder folder;
    folder.Write("b.SF2", "x");
    folder.Write("a \xC3\xA9.sf2", "x");
    folder.Write("c.sf3", "x");
    folder.Write("deeper/d.sf2", "x");
    std::filesystem::create_directory(folder.Path() / "folder.sf2");
    EXPECT_EQ(FindSoundFonts(folder.Text()),
              (std::vector<std::string>{folder.At("a \xC3\xA9.sf2"), folder.At("b.SF2")}));
    EXPECT_TRUE(FindSoundFonts(folder.At("missing")).empty());
    EXPECT_TRUE(FindSoundFonts("").empty());
}

TEST(SoundFonts, AFontThatCannotBeTakenLeavesTheOldOneAndSaysSo) {
    const ErrorBoxes boxes;
    const TemporaryFolder folder;
    BASS_Init(0, 44100, 0, nullptr, nullptr);
    const PlaybackState playback;
    SoundFontState fonts;
    fonts.soundFontFiles = {folder.Write("not a font.sf2", "text")};
    fonts.midiStreamFont = 77;
    EXPECT_FALSE(SelectSoundFont(fonts, playback, 1));
    EXPECT_EQ(ErrorBoxes::last, "Invalid sound font index.");
    EXPECT_FALSE(SelectSoundFont(fonts, playback, -1));
    EXPECT_FALSE(SelectSoundFont(fonts, playback, 0));
    EXPECT_EQ(ErrorBoxes::last, "Failed to load the selected soundfont.");
    EXPECT_EQ(fonts.midiStreamFont, 77U);
    BASS_Free();
    // While the music is stopped it is only chosen.
    fonts.currentSoundFont = -1;
    EXPECT_TRUE(SelectSoundFont(fonts, playback, 0));
    EXPECT_EQ(fonts.currentSoundFont, 0);
}

}  // namespace hullrider
