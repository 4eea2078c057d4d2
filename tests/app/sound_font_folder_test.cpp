#include "app/sound_font_folder.h"

#include <gtest/gtest.h>

#include "app/audio_start.h"
#include "tests/error_boxes.h"
#include "tests/temporary_folder.h"

namespace hullrider {

TEST(SoundFontFolder, IsTakenAndKeptOnlyWhenItsFontsCanBeUsed) {
    const ErrorBoxes boxes;
    const TemporaryFolder folder;
    folder.Write("data/note", "");
    folder.Write("none/readme.txt", "");
    folder.Write("broken/a.sf2", "no SoundFont");
    Player player;
    player.options.output.kind = OutputKind::kNull;
    player.state.shell.dataDirectory = folder.At("data");
    player.state.folders.soundFontDirectoryPath = "before";
    player.state.soundFonts.soundFontFiles = {"before/1.sf2", "before/2.sf2"};
    player.state.soundFonts.currentSoundFont = 1;
    InitAudio(player);
    for (const char* name : {"none", "broken", "missing"}) {
        EXPECT_FALSE(TakeSoundFontFolder(player, folder.At(name))) << name;
        EXPECT_EQ(player.state.soundFonts.soundFontFiles.size(), 2U) << name;
        EXPECT_EQ(player.state.soundFonts.currentSoundFont, 1) << name;
        EXPECT_EQ(player.state.folders.soundFontDirectoryPath, "before") << name;
    }
    EXPECT_FALSE(folder.Has("data/config.json"));

    StopMusic(player);  // nothing is loaded until it starts again
    EXPECT_TRUE(TakeSoundFontFolder(player, folder.At("broken")));
    EXPECT_EQ(player.state.soundFonts.soundFontFiles, std::vector<std::string>{folder.At("broken/a.sf2")});
    EXPECT_EQ(player.state.soundFonts.currentSoundFont, 0);
    EXPECT_NE(folder.Read("data/config.json").find("broken"), std::string::npos);
}

}  // namespace hullrider
