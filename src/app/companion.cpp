#include "app/companion.h"

#include <filesystem>

#include "app/current_favorite.h"
#include "app/library_loading.h"
#include "library/favorites.h"
#include "library/favorites_file.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/folder.h"
#include "platform/message_box.h"
#include "platform/paths.h"
#include "platform/program.h"
#include "platform/state_files.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

void WriteExport(const std::string& folder, const char* name, const std::string& text) {
    const std::string path = StatePath(folder, name);
    if (!WriteWholeFile(path, text)) PrintErrorLine("Failed to open " + path + " for writing.");
}

std::string Joined(const auto& list, const auto& lineOf) {
    std::string text;
    for (const auto& entry : list) text += lineOf(entry) + '\n';
    return text;
}

void WriteLibraryExport(const AppState& state) {
    std::string songs;
    for (const Playlist& playlist : state.library.playlists) {
        songs += Joined(playlist.songs, [](const Song& song) { return song.songPath; });
    }
    WriteExport(state.folders.hullriderPath, "\\MusicLibraryCache.txt", songs);
}

void WriteFavoritesExport(const AppState& state) {
    WriteExport(state.folders.hullriderPath, "\\SongFavs.txt",
                Joined(state.favorites.list, [](const FavoriteEntry& entry) { return entry.songPath; }));
}

// The user's own may be away.
std::string SoundFontFolderInUse(const AppState& state) {
    const std::vector<std::string>& files = state.soundFonts.soundFontFiles;
    return files.empty() ? state.folders.soundFontDirectoryPath : std::string(FolderOf(files.front()));
}

const char* KindText(int32_t type) {
    switch (type) {
        case kMidi:
            return "MIDI";
        case kMp3:
            return "MP3";
        case kTracker:
            return "Tracker";
        default:
            return "Radio";
    }
}

}  // namespace

std::string FindCompanionGame(const std::string& programFolder) {
    std::filesystem::path folder = PathFromUtf8(programFolder);
    for (;;) {
        if (IsFolder(Utf8FromPath(folder / "Tonewell"))) return Utf8FromPath(folder);
        if (!folder.has_relative_path()) return {};
        folder = folder.parent_path();
    }
}

void WriteCompanionExports(const AppState& state) {
    const std::string& folder = state.folders.hullriderPath;
    WriteLibraryExport(state);
    WriteExport(folder, "\\InternetStations.txt",
                Joined(state.radio.stations, [](const InternetStation& station) { return station.url; }));
    WriteFavoritesExport(state);
    WriteExport(folder, "\\MusicPaths.txt",
                Joined(state.settings.directoryPaths, [](const std::string& directory) { return directory; }));
    WriteExport(folder, "\\SoundFontsPath.Txt", SoundFontFolderInUse(state) + '\n');
}

void LaunchCompanionGame(const AppState& state) {
    const std::string& folder = state.folders.hullriderPath;
    if (folder.empty()) return;
    WriteCompanionExports(state);
    std::string error;
    const auto onEnd = [] { PrintLine("The game has ended."); };
    if (!StartElevated(StatePath(folder, "\\Hullrider.exe"), folder, error, onEnd)) {
        ShowErrorBox("Error launching the game: " + error);
    }
}

void MergeCompanionFavorites(AppState& state) {
    if (state.folders.hullriderPath.empty()) return;
    const std::string path = StatePath(state.folders.hullriderPath, kFavoritesFile);
    if (IsFile(path)) {
        LoadFavorites(path, state.favorites);
        MatchFavorites(state.favorites, state.library);
        RecountSongs(state);
    }
    WriteFavoritesExport(state);
}

void SyncCompanionLibrary(const AppState& state) {
    if (!state.folders.hullriderPath.empty()) WriteLibraryExport(state);
}

std::string SongInfoText(const AppState& state) {
    if (CurrentHandle(state.playback) == 0) return {};
    const PlaybackState& playback = state.playback;
    return playback.item.title + '\n' + playback.item.secondLine + '\n' + KindText(playback.item.type) + '\n' +
           std::to_string(CurrentFavoriteCount(state).value_or(0)) + '\n';
}

}  // namespace hullrider
