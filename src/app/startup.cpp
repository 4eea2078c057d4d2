#include "app/startup.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "app/companion.h"
#include "app/data_directory.h"
#include "app/favorites_files.h"
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
    const Settings& settings = state.settings;
    state.weights = {settings.rawFav, settings.rawMIDI, settings.rawMP3, settings.rawTracker, settings.rawRadio};
    UpdateSongCounts(state.library, state.weights, 0);
}

void Rescan(AppState& state, const std::vector<std::string>& directories) {
    RescanMusicLibrary(state.library, directories, state.shell.libraryCachePath, FavoritesMerger(state));
    Recount(state);
}

void InitAudio(Player& player) {
    const OutputChoice& output = player.options.output;
    ChooseOutput(output);
    if (!BASS_Init(-1, kMixingRateHz, 0, player.state.shell.mainWindow, nullptr)) {
        if (output.kind == OutputKind::kWav) throw std::runtime_error("Cannot record to " + output.wavPath);
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
            RescanMusicLibrary(state.library, state.settings.directoryPaths, state.shell.libraryCachePath,
                               FavoritesMerger(state));
        }
    }
    Recount(state);
}

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

void LoadSettingsFile(AppState& state) {
    const std::string path = StatePath(state.shell.dataDirectory, "\\MusicSettings.json");
    if (LoadSettings(path, state.settings) == SettingsReading::kUnreadable) {
        LoadSettings("MusicSettings.json", state.settings);
    }
    Recount(state);
}

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
    Rescan(state, directories);
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

// The companion edition, started without any music folder, takes over the game's music.
void AddCompanionMusic(AppState& state) {
    PrintLine("Current directory: " + WorkingFolder());
    if (state.settings.directoryPaths.empty() && !state.folders.hullriderPath.empty()) {
        for (const std::string& folder : CompanionMusicFolders(state.folders.hullriderPath)) {
            if (IsFolder(folder)) state.settings.directoryPaths.push_back(folder);
        }
        Settings& settings = state.settings;
        settings.rawMIDI = 50;
        settings.rawMP3 = 50;
        settings.rawRadio = 20;
        settings.rawTracker = 50;
        Rescan(state, settings.directoryPaths);
    }
    state.shell.companionExport = true;
    state.shell.startupFinished = true;
}

void TryDefaultMusicFolder(AppState& state) {
    if (state.library.typedSongCount > 0 || state.shell.libraryCachePath.empty()) return;
    ScanDefaultMusicFolder(state.library, WorkingFolder(), state.shell.libraryCachePath, FavoritesMerger(state));
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
    LoadFoldersAndSoundFonts(player);
    LoadSettingsFile(state);
    if (player.companionEdition) AddCompanionMusic(state);
    HealLibrary(player);
    TryDefaultMusicFolder(state);
    if (!state.folders.hullriderPath.empty()) WriteRunningMarker(state.folders.hullriderPath, "yes");
    LoadFavoriteFiles(state);
    Recount(state);
    PlayNext(state, player.random);
    PrintAudiobookSummary(state.audiobooks);
    if (state.shell.companionExport && !state.folders.hullriderPath.empty()) WriteCompanionExports(state);
}

void PollPlayer(Player& player) {
    if (IsSongOver(player.state.playback)) PlayNext(player.state, player.random);
}

}  // namespace hullrider
