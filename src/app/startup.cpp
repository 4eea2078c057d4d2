#include "app/startup.h"

#include <cstdio>

#include "app/audio_start.h"
#include "app/companion.h"
#include "app/data_directory.h"
#include "app/favorites_files.h"
#include "app/folder_scan.h"
#include "app/handed_files.h"
#include "app/library_loading.h"
#include "app/listening_files.h"
#include "app/shell_options_file.h"
#include "app/station_files.h"
#include "input/hotkey_file.h"
#include "library/folder_config_file.h"
#include "platform/console.h"
#include "platform/folder.h"
#include "platform/message_box.h"
#include "platform/paths.h"
#include "platform/state_files.h"
#include "playback/running_marker.h"
#include "playback/sound_fonts.h"
#include "playback/volume.h"
#include "radio/station_network.h"

namespace hullrider {

namespace {

// Uses the first folder that holds fonts: the configured one, the companion game's, the one beside the program. A
// configured folder without fonts stays configured: its drive may be missing.
void FindSoundFontFolder(Player& player) {
    AppState& app = player.state;
    std::string& configured = app.folders.soundFontDirectoryPath;
    std::vector<std::string> candidates{configured};
    if (player.companionEdition && !app.folders.hullriderPath.empty()) {
        candidates.push_back(CompanionSoundFontFolder(app.folders.hullriderPath));
    }
    candidates.push_back(StatePath(player.programFolder, "Soundfonts"));
    for (const std::string& folder : candidates) {
        app.soundFonts.soundFontFiles = FindSoundFonts(folder);
        if (app.soundFonts.soundFontFiles.empty()) continue;
        if (configured.empty()) configured = folder;
        return;
    }
}

void LoadFoldersAndSoundFonts(Player& player) {
    AppState& app = player.state;
    const std::string config = StatePath(app.shell.dataDirectory, kFolderConfigFile);
    LoadFolderConfig(config, app.folders);
    if (player.companionEdition) {
        const std::string game = FindCompanionGame(player.programFolder);
        if (!game.empty()) app.folders.hullriderPath = game;
    }
    FindSoundFontFolder(player);
    SaveFolderConfig(config, app.folders);
    if (app.soundFonts.soundFontFiles.empty()) {
        ShowErrorBox("No soundfont files found.");
    } else {
        SelectSoundFont(app.soundFonts, app.playback, app.soundFonts.currentSoundFont);
    }
}

// A font that has failed to load is not tried again: its error box has been shown.
void SelectDefaultSoundFont(Player& player) {
    SoundFontState& fonts = player.state.soundFonts;
    if (fonts.midiStreamFont != 0) SelectSoundFont(fonts, player.state.playback, fonts.currentSoundFont);
}

void TakeCompanionMix(Settings& settings) {
    settings.rawMIDI = 50;
    settings.rawMP3 = 50;
    settings.rawRadio = 20;
    settings.rawTracker = 50;
}

// The companion edition adds the game's music when no folder is configured.
void AddCompanionMusic(Player& player) {
    if (!player.companionEdition) return;
    AppState& app = player.state;
    PrintLine("Current directory: " + WorkingFolder());
    if (app.settings.directoryPaths.empty()) {
        for (const std::string& folder : CompanionMusicFolders(app.folders.hullriderPath)) {
            if (!app.folders.hullriderPath.empty() && IsFolder(folder)) {
                app.settings.directoryPaths.push_back(folder);
            }
        }
        app.library.playlists.clear();  // left over in the cache; the game's folders are scanned
        TakeCompanionMix(app.settings);
    }
    app.shell.companionExport = true;
    app.shell.startupFinished = true;
}

void NoteCachePath(Player& player) {
    // Music given for one run must not replace the cache of the user's own library.
    if (!player.options.music.empty()) return;
    player.state.shell.libraryCachePath = StatePath(player.state.shell.dataDirectory, kLibraryCacheFile);
}

void TakeSettings(Player& player) {
    AppState& app = player.state;
    LoadSettingsFile(app);
    TakeVolumeFromSettings(app);
    app.playback.volume->realTimeVolume = app.shell.options.followsLoudness;
}

void TellCompanionGame(Player& player) {
    const std::string& game = player.state.folders.hullriderPath;
    if (!game.empty()) WriteRunningMarker(game, "yes");
}

void ExportForCompanionGame(Player& player) {
    const AppState& app = player.state;
    if (app.shell.companionExport && !app.folders.hullriderPath.empty()) WriteCompanionExports(app);
}

void LoadHotkeys(Player& player) {
    LoadHotkeyFiles(StatePath(player.state.shell.dataDirectory, kHotkeysFile), player.hotkeys);
}

void PrintAudiobookSummary(const AudiobookState& audiobooks) {
    char hours[32];
    std::snprintf(hours, sizeof hours, "%.2f hours)", audiobooks.totalSec / 3600.0);
    PrintLine("Audiobook Library Statistics:");
    PrintLine("Total Series: " + std::to_string(audiobooks.seriesCount));
    PrintLine("Total Books: " + std::to_string(audiobooks.bookCount));
    PrintLine("Total Files: " + std::to_string(audiobooks.fileCount));
    PrintLine("Total Duration: " + std::to_string(static_cast<long long>(audiobooks.totalSec)) + " seconds (" + hours);
}

// A step and the file that it loads.
struct Step {
    void (*run)(Player&);
    bool LoadedFiles::*loads = nullptr;
};

template <void (*load)(AppState&)>
void Load(Player& player) {
    load(player.state);
}

constexpr Step kSteps[] = {
    {Load<LoadStatisticsFile>, &LoadedFiles::statistics},
    {NoteCachePath},
    {Load<LoadStationFiles>, &LoadedFiles::stations},
    {InitAudio},
    {Load<LoadLibrary>, &LoadedFiles::library},
    {Load<LoadPlayCountsFile>, &LoadedFiles::playCounts},
    {LoadFoldersAndSoundFonts},
    {TakeSettings, &LoadedFiles::settings},
    {AddCompanionMusic},
    {FillLibrary},
    {TellCompanionGame},
    {SelectDefaultSoundFont},
    {LoadHotkeys},
    {Load<LoadSongHistoryFile>, &LoadedFiles::songHistory},
    {Load<LoadFavoriteFiles>, &LoadedFiles::favorites},
    {Load<Recount>},
    {QueueFilesOfRun},
    {BeginMusic},
    {[](Player& player) { PrintAudiobookSummary(player.state.audiobooks); }},
    {ExportForCompanionGame},
};

std::shared_ptr<const StationNetwork> NetworkFor(const RunOptions& options) {
    const auto& server = options.directoryUrl;
    return std::make_shared<const StationNetwork>(
        MakeStationNetwork(server ? std::vector{*server} : DirectoryMirrors()));
}

}  // namespace

void StartPlayer(Player& player) {
    player.state.shell.dataDirectory = ChooseDataDirectory(player.options);
    player.picker.network = NetworkFor(player.options);
    CreateDataDirectory(player.state.shell.dataDirectory);
    LoadShellOptions(StatePath(player.state.shell.dataDirectory, kShellOptionsFile), player.state.shell.options);
    LoadHotkeys(player);
    if (player.takeHotkeys) player.takeHotkeys();
    OpenControllers(player.controllers);
    RunStartupSequence(player);
    player.started = true;
}

void RunStartupSequence(Player& player) {
    for (const Step& step : kSteps) {
        // A message handled during an error box may have ended the program.
        if (player.shutDown) return;
        step.run(player);
        if (step.loads != nullptr) player.loaded.*step.loads = true;
    }
}

}  // namespace hullrider
