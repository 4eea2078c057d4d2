#include "app/option_windows_win.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "app/audio_start.h"
#include "app/folder_scan.h"
#include "app/library_loading.h"
#include "app/options.h"
#include "app/player_hotkeys_win.h"
#include "app/sound_font_folder.h"
#include "dialogs/dialogs_win.h"
#include "dialogs/option_windows_win.h"
#include "platform/state_files.h"
#include "playback/transport.h"
#include "state/command_ids.h"

namespace hullrider {

namespace {

using DialogPointer = std::unique_ptr<Dialog>;

struct OptionWindow {
    int32_t command;
    const char* className;
    const char* title;
    DialogPointer (*make)(Player& player);  // null: not available yet
};

std::function<void()> Recounting(Player& player) {
    return [&player] { RecountSongs(player.state); };
}

DialogPointer MakeRadioOptions(Player& player) {
    return MakeRadioDialog({player.state, Recounting(player)});
}

DialogPointer MakeFavoriteOptions(Player& player) {
    const auto playSong = [&player](SongPosition position) {
        if (!StartAudioAgain(player)) return;
        PlaySong(player.state, player.picker, position.playlist, position.song);
    };
    return MakeFavoritesDialog({player.state.favorites, player.state.library, Recounting(player), playSong});
}

DialogPointer MakeFolders(Player& player) {
    AppState& app = player.state;
    const auto scan = [&player](bool isAskedFor) {
        StartFolderScan(player, isAskedFor ? ScanReason::kAskedFor : ScanReason::kFoldersChanged);
    };
    return MakeFolderDialog({app.settings.directoryPaths, app.library, app.folders.soundFontDirectoryPath,
                             app.soundFonts.soundFontFiles, scan, [&player] { return SongsFoundByScan(player); },
                             [&player](const std::string& folder) { return TakeSoundFontFolder(player, folder); }});
}

DialogPointer MakeHotkeyOptions(Player& player) {
    return MakeHotkeyDialog({player.hotkeys, player.refusedHotkeys, player.state.settings,
                             StatePath(player.state.shell.dataDirectory, kHotkeysFile),
                             [&player] { TakeHotkeys(player); }, [&player] { ReleaseHotkeys(player); }});
}

DialogPointer MakeSongInfo(Player& player) {
    return MakeSongInfoDialog(player.state);
}

DialogPointer MakeAbout(Player& player) {
    return MakeAboutDialog(VersionText(), player.state.shell.dataDirectory);
}

constexpr std::array kOptionWindows{
    OptionWindow{kFoldersCommand, "CustomFolderDialogClass", "Folder Information", MakeFolders},
    OptionWindow{kStationsCommand, "CustomIFolderDialogClass", "Internet Folder Information", nullptr},
    OptionWindow{kRadioOptionsCommand, "CustomRadioDialogClass", "Radio Options", MakeRadioOptions},
    OptionWindow{kFavoriteOptionsCommand, "CustomFavDialogClass", "Favorite Options", MakeFavoriteOptions},
    OptionWindow{kHotkeyOptionsCommand, "CustomHotKeyDialogClass", "Hotkey Options", MakeHotkeyOptions},
    OptionWindow{kVisualOptionsCommand, "CustomVisualDialogClass", "Visual Options", nullptr},
    OptionWindow{kEqualizerCommand, "CustomEQDialogClass", "Custom User EQ", nullptr},
    OptionWindow{kCustomStationCommand, "CustomUserRadioDialogClass", "Custom User Radio Maker", nullptr},
    OptionWindow{kSongInfoCommand, "CustomInfoDialogClass", "Song Information", MakeSongInfo},
    OptionWindow{kAboutCommand, "CustomAboutDialogClass", "About Hullrider Radio", MakeAbout},
    OptionWindow{kUpdateCommand, "CustomSearchDialogClass", "Update Hullrider", nullptr},
};

}  // namespace

void OpenOptionWindow(Player& player, int32_t command) {
    const auto* const window = std::find_if(kOptionWindows.begin(), kOptionWindows.end(),
                                            [=](const OptionWindow& one) { return one.command == command; });
    if (window == kOptionWindows.end()) return;
    OpenDialog(static_cast<HINSTANCE>(player.state.shell.instance), window->className, window->title, [&] {
        if (window->make != nullptr) return window->make(player);
        return MakeNoticeDialog(std::string(window->title) + ": not available yet. Edit MusicSettings.json instead.");
    });
}

}  // namespace hullrider
