#include "app/library_loading.h"

#include "app/settings_file.h"
#include "app/shell_options_file.h"
#include "library/cache.h"
#include "library/library_changes.h"
#include "library/play_counts.h"
#include "library/song_counts.h"
#include "library/song_history.h"
#include "platform/console.h"
#include "platform/folder.h"
#include "platform/paths.h"
#include "platform/state_files.h"
#include "playback/volume.h"

namespace hullrider {

namespace {}  // namespace

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

MusicFolders MusicOfRun(const Player& player) {
    const std::vector<std::string>& configured = player.state.settings.directoryPaths;
    if (!player.options.music.empty()) return {MusicSource::kGiven, player.options.music};
    if (!configured.empty()) return {MusicSource::kConfigured, configured};
    if (player.options.fallbackMusic) return {MusicSource::kFallback, {*player.options.fallbackMusic}};
    if (SongCountOf(player.state.library) > 0) return {};  // left over in the cache
    return {MusicSource::kWorkingFolder, {JoinPath(WorkingFolder(), "Music")}};
}

void LoadLibrary(AppState& state) {
    if (state.shell.libraryCachePath.empty()) return;
    state.library.playlists = LoadMusicLibraryCache(state.shell.libraryCachePath);
    if (state.library.playlists.empty()) {
        PrintLine("Music library cache is empty or couldn't be loaded.");
        if (state.settings.directoryPaths.empty()) {
            PrintLine("No directory paths available to update music library.");
        }
    }
    Recount(state);
}

void LoadSettingsFile(AppState& state) {
    const std::string path = StatePath(state.shell.dataDirectory, kSettingsFile);
    if (LoadSettings(path, state.settings) == StateReading::kUnreadable) {
        LoadSettings(kSettingsFile, state.settings);
    }
    Recount(state);
}

Settings SettingsToKeep(const AppState& state) {
    Settings settings = state.settings;
    settings.volumeLevel = NormalVolume(state);
    return settings;
}

ShellOptions OptionsToKeep(const AppState& state) {
    ShellOptions options = state.shell.options;
    options.isEquallyLoud = state.playback.realTimeVolume;
    return options;
}

void SaveSettingsFile(const AppState& state) {
    SaveSettings(StatePath(state.shell.dataDirectory, kSettingsFile), SettingsToKeep(state));
    SaveShellOptions(StatePath(state.shell.dataDirectory, kShellOptionsFile), OptionsToKeep(state));
}

void FillLibrary(Player& player) {
    AppState& state = player.state;
    const MusicFolders music = MusicOfRun(player);
    const bool isChosen = music.source != MusicSource::kNone && music.source != MusicSource::kWorkingFolder;
    state.selection.mixedMusic = isChosen;
    state.playback.demonstration = music.source == MusicSource::kFallback;
    if (!isChosen) return;
    // A library of his own that the cache still holds is left on the disk.
    const bool isNotTheUsers = state.playback.demonstration && HasMusicElsewhere(state.library.playlists, music.paths);
    if (isNotTheUsers) state.shell.libraryCachePath.clear();
    DropMusicElsewhere(state.library.playlists, music.paths);
    Recount(state);
}

}  // namespace hullrider
