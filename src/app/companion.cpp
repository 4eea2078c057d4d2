#include "app/companion.h"

#include <filesystem>

#include "platform/console.h"
#include "platform/files.h"
#include "platform/folder.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

void WriteExport(const std::string& folder, const char* name, const std::string& text) {
    const std::string path = StatePath(folder, name);
    if (!WriteWholeFile(path, text)) PrintErrorLine("Failed to open " + path + " for writing.");
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

void WriteLibraryExport(const AppState& state) {
    std::string songs;
    for (const Playlist& playlist : state.library.playlists) {
        for (const Song& song : playlist.songs) songs += song.songPath + '\n';
    }
    WriteExport(state.folders.hullriderPath, "\\MusicLibraryCache.txt", songs);
}

void WriteFavoritesExport(const AppState& state) {
    std::string favorites;
    for (const FavoriteEntry& entry : state.favorites.list) favorites += entry.songPath + '\n';
    WriteExport(state.folders.hullriderPath, "\\SongFavs.txt", favorites);
}

void WriteCompanionExports(const AppState& state) {
    std::string directories;
    for (const std::string& directory : state.settings.directoryPaths) directories += directory + '\n';

    const std::string& folder = state.folders.hullriderPath;
    WriteLibraryExport(state);
    WriteFavoritesExport(state);
    WriteExport(folder, "\\MusicPaths.txt", directories);
    WriteExport(folder, "\\SoundFontsPath.Txt", state.folders.soundFontDirectoryPath + '\n');
}

}  // namespace hullrider
