#include "app/library_loading.h"

#include <algorithm>

#include "app/favorites_files.h"
#include "app/settings_file.h"
#include "app/shell_options_file.h"
#include "library/cache.h"
#include "library/favorites.h"
#include "library/play_counts.h"
#include "library/scan.h"
#include "library/song_counts.h"
#include "library/song_history.h"
#include "platform/console.h"
#include "platform/folder.h"
#include "platform/paths.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

constexpr const char* kUpdatingText = "Updating music library from directories...";

// True when the library is not what a scan of the folders would find: songs of other folders, or none of one that is
// there. A folder that is not there now (a drive that is not plugged in) keeps its songs.
bool IsOfOtherFolders(const MusicLibrary& library, const std::vector<std::string>& directories) {
    std::vector<bool> met(directories.size(), false);
    for (const Playlist& playlist : library.playlists) {
        if (playlist.songs.empty()) continue;
        const auto holds = [&](const std::string& directory) {
            return playlist.songs.front().songPath.starts_with(JoinPath(directory, ""));
        };
        const auto found = std::find_if(directories.begin(), directories.end(), holds);
        if (found == directories.end()) return true;
        met[static_cast<size_t>(found - directories.begin())] = true;
    }
    for (size_t i = 0; i < directories.size(); ++i) {
        if (!met[i] && IsFolder(directories[i])) return true;
    }
    return false;
}

void UpdateLibrary(AppState& state, const std::vector<std::string>& directories) {
    PrintLine(kUpdatingText);
    RescanAndRecount(state, directories);
}

// Music that the user has not chosen. A library of his own that the cache still holds is left on the disk.
void PlayFallbackMusic(AppState& state, const std::string& directory) {
    const std::vector<std::string> directories{directory};
    if (SongCountOf(state.library) > 0 && IsOfOtherFolders(state.library, directories)) {
        state.shell.libraryCachePath.clear();
    }
    state.playback.demonstration = true;
    UpdateLibrary(state, directories);
}

// Makes the library hold what this run asks for: the music given for this run, else the configured folders when the
// cache was lost or is of others, else the fallback music.
void HealLibrary(Player& player) {
    AppState& state = player.state;
    const std::vector<std::string>& configured = state.settings.directoryPaths;
    if (!player.options.music.empty()) {
        UpdateLibrary(state, player.options.music);
    } else if (!configured.empty()) {
        if (SongCountOf(state.library) == 0 || IsOfOtherFolders(state.library, configured)) {
            UpdateLibrary(state, configured);
        }
    } else if (player.options.fallbackMusic) {
        PlayFallbackMusic(state, *player.options.fallbackMusic);
    }
}

// True when there was music in it.
bool TryDefaultMusicFolder(AppState& state) {
    if (state.library.typedSongCount > 0 || state.shell.libraryCachePath.empty()) return false;
    ScanDefaultMusicFolder(state.library, WorkingFolder(), state.shell.libraryCachePath, FavoritesMerger(state));
    Recount(state);
    return state.library.typedSongCount > 0;
}

}  // namespace

void RecountSongs(AppState& state) {
    const Settings& settings = state.settings;
    state.weights = {settings.rawFav, settings.rawMIDI, settings.rawMP3, settings.rawTracker, settings.rawRadio};
    UpdateSongCounts(state.library, state.weights, static_cast<int32_t>(state.radio.stations.size()));
}

void Recount(AppState& state) {
    RecountSongs(state);
    MergePlayCounts(state.library, state.playCounts);
    FindHistoryInLibrary(state.history, state.library);
}

void RescanAndRecount(AppState& state, const std::vector<std::string>& directories) {
    RescanMusicLibrary(state.library, directories, state.shell.libraryCachePath, FavoritesMerger(state));
    MatchFavorites(state.favorites, state.library);
    Recount(state);
}

void LoadLibrary(AppState& state) {
    if (state.shell.libraryCachePath.empty()) return;
    state.library.playlists = LoadMusicLibraryCache(state.shell.libraryCachePath);
    if (state.library.playlists.empty()) {
        PrintLine("Music library cache is empty or couldn't be loaded.");
        if (state.settings.directoryPaths.empty()) {
            PrintLine("No directory paths available to update music library.");
        } else {
            PrintLine(kUpdatingText);
            RescanMusicLibrary(state.library, state.settings.directoryPaths, state.shell.libraryCachePath,
                               FavoritesMerger(state));
        }
    }
    Recount(state);
}

void LoadSettingsFile(AppState& state) {
    const std::string path = StatePath(state.shell.dataDirectory, "\\MusicSettings.json");
    if (LoadSettings(path, state.settings) == SettingsReading::kUnreadable) {
        LoadSettings("MusicSettings.json", state.settings);
    }
    Recount(state);
}

void SaveSettingsFile(const AppState& state) {
    Settings settings = state.settings;
    settings.volumeLevel = NormalVolume(state);
    SaveSettings(StatePath(state.shell.dataDirectory, "\\MusicSettings.json"), settings);
    ShellOptions options = state.shell.options;
    options.isEquallyLoud = state.playback.realTimeVolume;
    SaveShellOptions(StatePath(state.shell.dataDirectory, kShellOptionsFile), options);
}

void FillLibrary(Player& player) {
    HealLibrary(player);
    AppState& state = player.state;
    state.selection.mixedMusic = TryDefaultMusicFolder(state) || !state.settings.directoryPaths.empty() ||
                                 !player.options.music.empty() || state.playback.demonstration;
}

}  // namespace hullrider
