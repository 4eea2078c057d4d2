#include "library/scan.h"

#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "library/music_type.h"
#include "platform/console.h"
#include "platform/folder.h"
#include "platform/paths.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

bool IsFavoritesFile(std::string_view name) {
    static constexpr std::string_view kName = kFavoritesFile;
    return name.size() == kName.size() && ToLower(name) == kName;
}

void TellFavorites(std::string_view folder, std::string_view name, const FavoritesFound& favoritesFound) {
    if (favoritesFound && IsFavoritesFile(name)) favoritesFound(JoinPath(folder, name));
}

std::string NotText(std::string_view folder) {
    return "a name in " + std::string(folder) + " is not valid text";
}

// Nothing when the file is not a song.
std::optional<Song> SongFrom(const std::string& folder, std::string_view name) {
    const MusicType type = MusicTypeOf(name);
    if (type == kUnsupported) return std::nullopt;
    Song song;
    song.songPath = JoinPath(folder, name);
    song.musicType = type;
    return song;
}

// False, with a line on the error stream, when it was not read to its end.
bool ListOrReport(const std::string& folder, const std::function<void(const FolderEntry&)>& take) {
    std::string error;
    if (ListFolder(folder, take, error)) return true;
    PrintErrorLine("Failed to read folder: " + folder + ": " + error);
    return false;
}

// Adds the album's songs; false when it was not read to its end.
bool ScanAlbum(const std::string& folder, const FavoritesFound& favoritesFound, std::vector<Song>& songs) {
    return ListOrReport(folder, [&](const FolderEntry& entry) {
        if (entry.kind != EntryKind::kFile) return;
        if (!entry.nameIsText) {
            PrintErrorLine("Failed to process file: " + NotText(folder));
            return;
        }
        TellFavorites(folder, entry.name, favoritesFound);
        if (std::optional<Song> song = SongFrom(folder, entry.name)) songs.push_back(std::move(*song));
    });
}

// Adds the names of the album folders and reports favorites files on the way; false when the folder was not read to its
// end.
bool FindAlbums(const std::string& path, const FavoritesFound& favoritesFound, std::vector<std::string>& names) {
    return ListOrReport(path, [&](const FolderEntry& entry) {
        if (entry.kind == EntryKind::kFile && entry.nameIsText) TellFavorites(path, entry.name, favoritesFound);
        if (entry.kind != EntryKind::kFolder) return;
        if (entry.nameIsText) {
            names.emplace_back(entry.name);
        } else {
            PrintErrorLine("Error processing folder name. Exception: " + NotText(path));
        }
    });
}

std::string OwnName(const std::string& folder) {
    return Utf8FromPath(PathFromUtf8(AbsolutePath(folder)).filename());
}

void GatherFolder(const std::string& folder, std::vector<Song>& songs) {
    ScanAlbum(folder, {}, songs);
    std::vector<std::string> names;
    FindAlbums(folder, {}, names);
    for (const std::string& name : names) ScanAlbum(JoinPath(folder, name), {}, songs);
}

bool IsUnwanted(const ScanProgress* progress) {
    return progress != nullptr && progress->isUnwanted;
}

}  // namespace

std::vector<Playlist> ScanDirectory(const std::string& path, MusicLibrary& library,
                                    const FavoritesFound& favoritesFound, ScanProgress* progress) {
    if (!IsFolder(path)) {
        library.missingFolders.push_back(path);
        PrintErrorLine("Directory does not exist or is not a directory: " + path);
        return {};
    }
    std::vector<std::string> names;
    if (!FindAlbums(path, favoritesFound, names)) library.missingFolders.push_back(path);
    std::vector<Playlist> playlists;
    for (std::string& name : names) {
        if (IsUnwanted(progress)) break;
        Playlist playlist;
        const std::string folder = JoinPath(path, name);
        if (!ScanAlbum(folder, favoritesFound, playlist.songs)) library.missingFolders.push_back(folder);
        if (playlist.songs.empty()) continue;
        playlist.albumName = std::move(name);
        playlist.songCount = static_cast<int32_t>(playlist.songs.size());
        library.totalSongs += playlist.songCount;
        library.playlistCount += 1;
        if (progress != nullptr) progress->songsFound += playlist.songCount;
        playlists.push_back(std::move(playlist));
    }
    return playlists;
}

Playlist GatherSongs(const std::vector<std::string>& paths) {
    Playlist gathered;
    gathered.isQueue = true;
    gathered.albumName = paths.size() == 1 && IsFolder(paths[0]) ? OwnName(paths[0]) : "Queued songs";
    for (const std::string& path : paths) {
        if (IsFolder(path)) {
            GatherFolder(path, gathered.songs);
        } else if (const MusicType type = MusicTypeOf(path); type != kUnsupported && IsFile(path)) {
            Song song;
            song.songPath = path;
            song.musicType = type;
            gathered.songs.push_back(std::move(song));
        }
    }
    gathered.songCount = static_cast<int32_t>(gathered.songs.size());
    return gathered;
}

void ScanMusicFolders(MusicLibrary& library, const std::vector<std::string>& directoryPaths,
                      const FavoritesFound& favoritesFound, ScanProgress* progress) {
    library.playlists.clear();
    library.missingFolders.clear();
    for (const std::string& path : directoryPaths) {
        if (IsUnwanted(progress)) break;
        std::vector<Playlist> found = ScanDirectory(path, library, favoritesFound, progress);
        library.playlists.insert(library.playlists.end(), std::make_move_iterator(found.begin()),
                                 std::make_move_iterator(found.end()));
    }
}

}  // namespace hullrider
