#include "app/startup.h"

#include <cstdio>
#include <cstdlib>
#include <random>

#include "app/companion.h"
#include "app/data_directory.h"
#include "app/settings_file.h"
#include "audio/bass.h"
#include "library/cache.h"
#include "library/folder_config_file.h"
#include "library/scan.h"
#include "library/song_counts.h"
#include "platform/console.h"
#include "platform/folder.h"
#include "platform/message_box.h"
#include "platform/paths.h"
#include "playback/play_next.h"
#include "playback/running_marker.h"
#include "playback/sound_fonts.h"

namespace hullrider {

namespace {

constexpr uint32_t kMixingRateHz = 44100;
constexpr const char* kUpdatingText = "Updating music library from directories...";

void Recount(AppState& state) {
    UpdateSongCounts(state.library, state.weights, 0);
}

void Rescan(AppState& state, const std::vector<std::string>& directories) {
    RescanMusicLibrary(state.library, directories, state.shell.libraryCachePath);
    Recount(state);
}

void InitAudio(Player& player) {
    ChooseOutput(player.options.output);
    if (!BASS_Init(-1, kMixingRateHz, 0, player.state.shell.mainWindow, nullptr)) {
        ShowErrorBox("Failed to initialize BASS library!");
        PrintErrorLine("No sound device could be opened: playing silently.");
        BASS_Init(0, kMixingRateHz, 0, player.state.shell.mainWindow, nullptr);
        return;
    }
    BASS_PluginLoad("bassmidi.dll", 0);
    BASS_PluginLoad("bass_aac.dll", 0);
    if (BASS_PluginLoad("BASSFLAC.dll", 0) == 0) PrintLine("Failed to load BASSFLAC.dll");
}

// The folders are not known yet: they are read with the settings. HealLibrary looks again then.
void LoadLibrary(AppState& state) {
    if (state.shell.libraryCachePath.empty()) return;
    state.library.playlists = LoadMusicLibraryCache(state.shell.libraryCachePath);
    if (state.library.playlists.empty()) {
        PrintLine("Music library cache is empty or couldn't be loaded.");
        if (state.settings.directoryPaths.empty()) {
            PrintLine("No directory paths available to update music library.");
        } else {
            PrintLine(kUpdatingText);
            RescanMusicLibrary(state.library, state.settings.directoryPaths, state.shell.libraryCachePath);
        }
    }
    Recount(state);
}

// Tries the configured folder, that of the companion game and the one beside the program, in this order, until one
// holds fonts.
void FindSoundFontFolder(AppState& state) {
    std::vector<std::string> candidates{state.folders.soundFontDirectoryPath};
    if (kCompanionEdition && !state.folders.hullriderPath.empty()) {
        candidates.push_back(CompanionSoundFontFolder(state.folders.hullriderPath));
    }
    candidates.push_back(StatePath(ProgramFolder(), "\\Soundfonts"));
    for (const std::string& folder : candidates) {
        state.soundFonts.soundFontFiles = FindSoundFonts(folder);
        if (state.soundFonts.soundFontFiles.empty()) continue;
        state.folders.soundFontDirectoryPath = folder;
        return;
    }
}

void LoadFoldersAndSoundFonts(AppState& state) {
    const std::string config = StatePath(state.shell.dataDirectory, "\\config.json");
    LoadFolderConfig(config, state.folders);
    if (kCompanionEdition) {
        const std::string game = FindCompanionGame(ProgramFolder());
        if (!game.empty()) state.folders.hullriderPath = game;
    }
    FindSoundFontFolder(state);
    SaveFolderConfig(config, state.folders);
    if (state.soundFonts.soundFontFiles.empty()) {
        ShowErrorBox("No soundfont files found.");
    } else {
        SelectSoundFont(state.soundFonts, state.playback, state.soundFonts.currentSoundFont);
    }
}

void LoadSettingsFile(AppState& state) {
    const std::string path = StatePath(state.shell.dataDirectory, "\\MusicSettings.json");
    if (LoadSettings(path, state.settings) == SettingsReading::kUnreadable) {
        LoadSettings("MusicSettings.json", state.settings);
    }
    const Settings& settings = state.settings;
    state.weights = {settings.rawFav, settings.rawMIDI, settings.rawMP3, settings.rawTracker, settings.rawRadio};
    Recount(state);
}

// Makes the library hold what this run asks for: the music given for this run, else the configured folders when the
// cache had nothing of them, else the fallback music.
void HealLibrary(Player& player) {
    AppState& state = player.state;
    std::vector<std::string> directories = player.options.music;
    if (directories.empty() && SongCountOf(state.library) == 0) directories = state.settings.directoryPaths;
    if (state.settings.directoryPaths.empty() && player.options.music.empty() && player.options.fallbackMusic) {
        directories = {*player.options.fallbackMusic};
        state.playback.demonstration = true;
    }
    if (directories.empty()) return;
    PrintLine(kUpdatingText);
    Rescan(state, directories);
}

// The companion edition, started without any music folder, takes over the game's music.
void AddCompanionMusic(AppState& state) {
    PrintLine("Current directory: " + WorkingFolder());
    if (state.settings.directoryPaths.empty() && !state.folders.hullriderPath.empty()) {
        for (const std::string& folder : CompanionMusicFolders(state.folders.hullriderPath)) {
            if (IsFolder(folder)) state.settings.directoryPaths.push_back(folder);
        }
        Rescan(state, state.settings.directoryPaths);
        Settings& settings = state.settings;
        settings.rawMIDI = 50;
        settings.rawMP3 = 50;
        settings.rawRadio = 20;
        settings.rawTracker = 50;
    }
    state.shell.companionExport = true;
    state.shell.startupFinished = true;
}

void TryDefaultMusicFolder(AppState& state) {
    if (state.library.typedSongCount > 0 || state.shell.libraryCachePath.empty()) return;
    ScanDefaultMusicFolder(state.library, WorkingFolder(), state.shell.libraryCachePath);
    Recount(state);
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
    const unsigned seed = std::random_device{}();
    std::srand(seed);
    player.state.shell.dataDirectory = ChooseDataDirectory(player.options);
    CreateDataDirectory(player.state.shell.dataDirectory);
    OpenControllers(player.controllers);
    RunStartupSequence(player);
}

void RunStartupSequence(Player& player) {
    AppState& state = player.state;
    // Music given for one run must not take the place of the user's own library.
    if (player.options.music.empty()) {
        state.shell.libraryCachePath = StatePath(state.shell.dataDirectory, "\\musicLibraryCache.json");
    }
    InitAudio(player);
    LoadLibrary(state);
    LoadFoldersAndSoundFonts(state);
    LoadSettingsFile(state);
    if (kCompanionEdition) AddCompanionMusic(state);
    HealLibrary(player);
    TryDefaultMusicFolder(state);
    if (!state.folders.hullriderPath.empty()) WriteRunningMarker(state.folders.hullriderPath, "yes");
    PlayNext(state, player.random);
    PrintAudiobookSummary(state.audiobooks);
    if (state.shell.companionExport && !state.folders.hullriderPath.empty()) WriteCompanionExports(state);
}

void PollPlayer(Player& player) {
    if (IsSongOver(player.state.playback)) PlayNext(player.state, player.random);
}

}  // namespace hullrider
