#include "app/sound_font_folder.h"

#include <utility>

#include "library/folder_config_file.h"
#include "platform/paths.h"
#include "platform/state_files.h"
#include "playback/sound_fonts.h"

namespace hullrider {

bool TakeSoundFontFolder(Player& player, const std::string& folder) {
    AppState& app = player.state;
    SoundFontState& fonts = app.soundFonts;
    std::vector<std::string> files = FindSoundFonts(folder);
    if (files.empty()) return false;
    std::swap(fonts.soundFontFiles, files);
    const int32_t fontBefore = std::exchange(fonts.currentSoundFont, 0);
    // While the music is stopped, fonts cannot be loaded.
    if (!player.stopped && !SelectSoundFont(fonts, app.playback, 0)) {
        std::swap(fonts.soundFontFiles, files);
        fonts.currentSoundFont = fontBefore;
        return false;
    }
    app.folders.soundFontDirectoryPath = folder;
    SaveFolderConfig(StatePath(app.shell.dataDirectory, kFolderConfigFile), app.folders);
    return true;
}

}  // namespace hullrider
