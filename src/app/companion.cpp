#include "app/companion.h"

#include <filesystem>

#include "app/current_favorite.h"
#include "app/library_loading.h"
#include "library/favorites.h"
#include "library/favorites_file.h"
#include "library/type_names.h"
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

void WriteLibraryExport(const AppState& app) {
    std::string songs;
    for (const Playlist& playlist : app.library.playlists) {
        songs += Joined(playlist.songs, [](const Song& song) { return song.songPath; });
    }
    WriteExport(app.folders.hullriderPath, "\\MusicLibraryCache.txt", songs);
}

void WriteFavoritesExport(const AppState& app) {
    WriteExport(app.folders.hullriderPath, "\\SongFavs.txt",
                Joined(app.favorites.list, [](const FavoriteEntry& entry) { return entry.songPath; }));
}

// The configured folder may be missing, and another one in use.
std::string SoundFontFolderInUse(const AppState& app) {
    const std::vector<std::string>& files = app.soundFonts.soundFontFiles;
    return files.empty() ? app.folders.soundFontDirectoryPath : std::string(FolderOf(files.front()));
}

const char* TypeText(int32_t type) {
    const auto at = static_cast<size_t>(type);
    return at < kTypeNames.size() ? kTypeNames[at].brief : "";
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

void WriteCompanionExports(const AppState& app) {
    const std::string& folder = app.folders.hullriderPath;
    WriteLibraryExport(app);
    WriteExport(folder, "\\InternetStations.txt",
                Joined(app.radio.stations, [](const InternetStation& station) { return station.url; }));
    WriteFavoritesExport(app);
    WriteExport(folder, "\\MusicPaths.txt",
                Joined(app.settings.directoryPaths, [](const std::string& directory) { return directory; }));
    WriteExport(folder, "\\SoundFontsPath.Txt", SoundFontFolderInUse(app) + '\n');
}

void LaunchCompanionGame(const AppState& app) {
    const std::string& folder = app.folders.hullriderPath;
    if (folder.empty()) return;
    WriteCompanionExports(app);
    std::string error;
    const auto onEnd = [] { PrintLine("The game has ended."); };
    if (!StartElevated(StatePath(folder, "\\Hullrider.exe"), folder, error, onEnd)) {
        ShowErrorBox("Error launching the game: " + error);
    }
}

void MergeCompanionFavorites(AppState& app) {
    if (app.folders.hullriderPath.empty()) return;
    const std::string path = StatePath(app.folders.hullriderPath, kFavoritesFile);
    if (IsFile(path)) {
        LoadFavorites(path, app.favorites);
        MatchFavorites(app.favorites, app.library);
        RecountSongs(app);
    }
    WriteFavoritesExport(app);
}

void SyncCompanionLibrary(const AppState& app) {
    if (!app.folders.hullriderPath.empty()) WriteLibraryExport(app);
}

std::string SongInfoText(const AppState& app) {
    if (CurrentHandle(app.playback) == 0) return {};
    const PlaybackState& playback = app.playback;
    const bool isStation = playback.item.kind == PlayItem::Kind::kStation;
    const std::string& secondLine = isStation ? app.radio.nowPlaying.songTitle : playback.item.secondLine;
    return playback.item.title + '\n' + secondLine + '\n' + TypeText(playback.item.type) + '\n' +
           std::to_string(CurrentFavoriteCount(app).value_or(0)) + '\n';
}

}  // namespace hullrider
