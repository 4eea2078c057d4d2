// Makes the option windows. Each is handed what it works on, which must live as long as the window does, and the few
// things that only the application can do for it. UI thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "dialogs/dialog_win.h"
#include "input/hotkeys.h"
#include "library/song_counts.h"
#include "state/app_state.h"

namespace hullrider {

struct RadioPorts {
    AppState& app;
    std::function<void()> recountSongs;  // after a change of weights
};
std::unique_ptr<Dialog> MakeRadioDialog(RadioPorts ports);

struct FavoritesPorts {
    FavoritesState& favorites;
    MusicLibrary& library;
    std::function<void()> recountSongs;  // after a change of the songs' marks
    std::function<void(SongPosition)> playSong;
};
std::unique_ptr<Dialog> MakeFavoritesDialog(FavoritesPorts ports);

struct FolderPorts {
    std::vector<std::string>& musicFolders;
    const MusicLibrary& library;
    const std::string& soundFontFolder;
    const std::vector<std::string>& soundFonts;
    // Begins to; the library follows when that is done. Songs of folders that are away now go only when the user has
    // asked for the scan.
    std::function<void(bool isAskedFor)> scanMusicFolders;
    std::function<std::optional<int32_t>()> songsFoundByScan;       // so far; nothing when no scan is under way
    std::function<bool(const std::string& folder)> takeSoundFonts;  // false: none to use, and the old ones stay
};
std::unique_ptr<Dialog> MakeFolderDialog(FolderPorts ports);

struct HotkeyPorts {
    HotkeyBindings& bindings;
    const std::vector<RefusedHotkey>& refused;  // of those that were to be registered
    Settings& settings;
    std::string file;                      // where the bindings are saved
    std::function<void()> takeHotkeys;     // registers the bindings as they are now
    std::function<void()> releaseHotkeys;  // none is registered any more, so that each key can be pressed
};
std::unique_ptr<Dialog> MakeHotkeyDialog(HotkeyPorts ports);

std::unique_ptr<Dialog> MakeSongInfoDialog(const AppState& app);

std::unique_ptr<Dialog> MakeAboutDialog(std::string versionText, std::string dataDirectory);

// For a subject that has no window yet: says so.
std::unique_ptr<Dialog> MakeNoticeDialog(std::string text);

}  // namespace hullrider
