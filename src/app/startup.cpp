#include "app/startup.h"

#include <cstdio>

#include "app/audio_start.h"
#include "app/command_lines.h"
#include "app/companion.h"
#include "app/data_directory.h"
#include "app/favorites_files.h"
#include "app/folder_scan.h"
#include "app/library_loading.h"
#include "app/listening_files.h"
#include "app/shell_options_file.h"
#include "input/hotkey_file.h"
#include "library/folder_config_file.h"
#include "platform/console.h"
#include "platform/folder.h"
#include "platform/message_box.h"
#include "platform/paths.h"
#include "playback/play_next.h"
#include "playback/running_marker.h"
#include "playback/sound_fonts.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

// Tries the configured folder, that of the companion game and the one beside the program, in this order, until one
// holds fonts.
void FindSoundFontFolder(Player& player) {
    AppState& state = player.state;
    std::vector<std::string> candidates{state.folders.soundFontDirectoryPath};
    if (player.companionEdition && !state.folders.hullriderPath.empty()) {
        candidates.push_back(CompanionSoundFontFolder(state.folders.hullriderPath));
    }
    candidates.push_back(StatePath(player.programFolder, "\\Soundfonts"));
    for (const std::string& folder : candidates) {
        state.soundFonts.soundFontFiles = FindSoundFonts(folder);
        if (state.soundFonts.soundFontFiles.empty()) continue;
        state.folders.soundFontDirectoryPath = folder;
        return;
    }
}

void LoadFoldersAndSoundFonts(Player& player) {
    AppState& state = player.state;
    const std::string config = StatePath(state.shell.dataDirectory, "\\config.json");
    LoadFolderConfig(config, state.folders);
    if (player.companionEdition) {
        const std::string game = FindCompanionGame(player.programFolder);
        if (!game.empty()) state.folders.hullriderPath = game;
    }
    FindSoundFontFolder(player);
    SaveFolderConfig(config, state.folders);
    if (state.soundFonts.soundFontFiles.empty()) {
        ShowErrorBox("No soundfont files found.");
    } else {
        SelectSoundFont(state.soundFonts, state.playback, state.soundFonts.currentSoundFont);
    }
}

void TakeCompanionMix(AppState& state) {
    Settings& settings = state.settings;
    settings.rawMIDI = 50;
    settings.rawMP3 = 50;
    settings.rawRadio = 20;
    settings.rawTracker = 50;
    RescanAndRecount(state, settings.directoryPaths);
}

// The companion edition, started without any music folder, takes over the game's music.
void AddCompanionMusic(AppState& state) {
    PrintLine("Current directory: " + WorkingFolder());
    if (state.settings.directoryPaths.empty() && !state.folders.hullriderPath.empty()) {
        for (const std::string& folder : CompanionMusicFolders(state.folders.hullriderPath)) {
            if (IsFolder(folder)) state.settings.directoryPaths.push_back(folder);
        }
        // Without any of the folders the user's own mix and library stay.
        if (!state.settings.directoryPaths.empty()) TakeCompanionMix(state);
    }
    state.shell.companionExport = true;
    state.shell.startupFinished = true;
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

}  // namespace

void StartPlayer(Player& player) {
    player.state.shell.dataDirectory = ChooseDataDirectory(player.options);
    CreateDataDirectory(player.state.shell.dataDirectory);
    LoadShellOptions(StatePath(player.state.shell.dataDirectory, kShellOptionsFile), player.state.shell.options);
    LoadHotkeyFiles(StatePath(player.state.shell.dataDirectory, "\\hotkeyConfig.json"), player.hotkeys);
    if (player.takeHotkeys) player.takeHotkeys();
    OpenControllers(player.controllers);
    RunStartupSequence(player);
    player.started = true;
}

void RunStartupSequence(Player& player) {
    AppState& state = player.state;
    LoadStatisticsFile(state);
    // Music given for one run must not take the place of the user's own library.
    if (player.options.music.empty()) {
        state.shell.libraryCachePath = StatePath(state.shell.dataDirectory, "\\musicLibraryCache.json");
    }
    InitAudio(player);
    LoadLibrary(state);
    LoadPlayCountsFile(state);
    LoadFoldersAndSoundFonts(player);
    LoadSettingsFile(state);
    TakeVolumeFromSettings(state);
    state.playback.realTimeVolume = state.shell.options.isEquallyLoud;
    if (player.companionEdition) AddCompanionMusic(state);
    FillLibrary(player);
    if (!state.folders.hullriderPath.empty()) WriteRunningMarker(state.folders.hullriderPath, "yes");
    LoadSongHistoryFile(state);
    LoadFavoriteFiles(state);
    Recount(state);
    PlayNext(state, player.draws);
    PrintAudiobookSummary(state.audiobooks);
    if (state.shell.companionExport && !state.folders.hullriderPath.empty()) WriteCompanionExports(state);
}

void PollPlayer(Player& player) {
    if (!player.started || player.shutDown) return;
    if (!player.stopped && IsSongOver(player.state.playback)) PlayNext(player.state, player.draws);
    PollCommandFolder(player);
    PumpControllers(player.controllers);
    PollFolderScan(player);
}

}  // namespace hullrider
