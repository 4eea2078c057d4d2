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

void RecountSongs(AppState& app) {
    const Settings& settings = app.settings;
    app.weights = {settings.rawFav, settings.rawMIDI, settings.rawMP3, settings.rawTracker, settings.rawRadio};
    UpdateSongCounts(app.library, app.weights, static_cast<int32_t>(app.radio.stations.size()));
}

void Recount(AppState& app) {
    RecountSongs(app);
    MergePlayCounts(app.library, app.playCounts);
    FindHistoryInLibrary(app.history, app.library);
}

MusicFolders MusicOfRun(const Player& player) {
    const std::vector<std::string>& configured = player.state.settings.directoryPaths;
    if (!player.options.music.empty()) return {MusicSource::kGiven, player.options.music};
    if (!configured.empty()) return {MusicSource::kConfigured, configured};
    if (player.options.fallbackMusic) return {MusicSource::kFallback, {*player.options.fallbackMusic}};
    if (player.state.library.typedSongCount > 0) return {};  // left over in the cache
    return {MusicSource::kWorkingFolder, {JoinPath(WorkingFolder(), "Music")}};
}

void LoadLibrary(AppState& app) {
    if (app.shell.libraryCachePath.empty()) return;
    app.library.playlists = LoadMusicLibraryCache(app.shell.libraryCachePath);
    if (app.library.playlists.empty()) {
        PrintLine("Music library cache is empty or couldn't be loaded.");
        if (app.settings.directoryPaths.empty()) {
            PrintLine("No directory paths available to update music library.");
        }
    }
    Recount(app);
}

void LoadSettingsFile(AppState& app) {
    const std::string path = StatePath(app.shell.dataDirectory, kSettingsFile);
    if (LoadSettings(path, app.settings) == StateReading::kUnreadable) {
        LoadSettings(kSettingsFile, app.settings);
    }
    Recount(app);
}

Settings SettingsToKeep(const AppState& app) {
    Settings settings = app.settings;
    settings.volumeLevel = NormalVolume(app);
    return settings;
}

ShellOptions OptionsToKeep(const AppState& app) {
    ShellOptions options = app.shell.options;
    options.followsLoudness = app.playback.volume->realTimeVolume;
    return options;
}

void SaveSettingsFile(const AppState& app) {
    SaveSettings(StatePath(app.shell.dataDirectory, kSettingsFile), SettingsToKeep(app));
    SaveShellOptions(StatePath(app.shell.dataDirectory, kShellOptionsFile), OptionsToKeep(app));
}

void FillLibrary(Player& player) {
    AppState& app = player.state;
    const MusicFolders music = MusicOfRun(player);
    const bool isChosen = music.source != MusicSource::kNone && music.source != MusicSource::kWorkingFolder;
    app.selection.mixedMusic = isChosen;
    app.playback.demonstration = music.source == MusicSource::kFallback;
    if (!isChosen) return;
    // Do not overwrite a cache that still holds the user's own library.
    const bool isNotTheUsers = app.playback.demonstration && HasMusicElsewhere(app.library.playlists, music.paths);
    if (isNotTheUsers) app.shell.libraryCachePath.clear();
    DropMusicElsewhere(app.library.playlists, music.paths);
    Recount(app);
}

}  // namespace hullrider
