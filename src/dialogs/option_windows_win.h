// Makes the option windows. Each gets the data that it works on, which must outlive the window, and functions for what
// only the application can do. UI thread.
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
    // Starts a scan; the library changes when it is done. `isAskedFor`: the user wants a rescan, which also removes the
    // songs of missing folders.
    std::function<void(bool isAskedFor)> scanMusicFolders;
    std::function<std::optional<int32_t>()> songsFoundByScan;       // empty when no scan is running
    std::function<bool(const std::string& folder)> takeSoundFonts;  // false: none usable, the old ones stay
};
std::unique_ptr<Dialog> MakeFolderDialog(FolderPorts ports);

struct HotkeyPorts {
    HotkeyBindings& bindings;
    const std::vector<RefusedHotkey>& refused;  // by the last registration
    Settings& settings;
    std::string file;                      // where the bindings are saved
    std::function<void()> takeHotkeys;     // registers the current bindings
    std::function<void()> releaseHotkeys;  // unregisters all, so that each key can be pressed
};
std::unique_ptr<Dialog> MakeHotkeyDialog(HotkeyPorts ports);

std::unique_ptr<Dialog> MakeSongInfoDialog(const AppState& app);

std::unique_ptr<Dialog> MakeAboutDialog(std::string versionText, std::string dataDirectory);

// For a command that has no window yet.
std::unique_ptr<Dialog> MakeNoticeDialog(std::string text);

}  // namespace hullrider
