#include "app/sound_font_folder.h"

#include <utility>

#include "library/folder_config_file.h"
#include "platform/paths.h"
#include "platform/state_files.h"
#include "playback/sound_fonts.h"

namespace hullrider {

bool TakeSoundFontFolder(Player& player, const std::string& folder) {
    AppState& state = player.state;
    SoundFontState& fonts = state.soundFonts;
    std::vector<std::string> files = FindSoundFonts(folder);
    if (files.empty()) return false;
    std::swap(fonts.soundFontFiles, files);
    const int32_t fontBefore = std::exchange(fonts.currentSoundFont, 0);
    // While the music is stopped there is nothing to load a font into.
    if (!player.stopped && !SelectSoundFont(fonts, state.playback, 0)) {
        std::swap(fonts.soundFontFiles, files);
        fonts.currentSoundFont = fontBefore;
        return false;
    }
    state.folders.soundFontDirectoryPath = folder;
    SaveFolderConfig(StatePath(state.shell.dataDirectory, kFolderConfigFile), state.folders);
    return true;
}

}  // namespace hullrider
