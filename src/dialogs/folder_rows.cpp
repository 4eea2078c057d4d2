#include "dialogs/folder_rows.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "library/music_type.h"
#include "library/song_counts.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

// Normalized, so that the same folder is always the same text.
std::string Plain(std::string_view path) {
    std::string plain = ToLower(path);
    std::replace(plain.begin(), plain.end(), '\\', '/');
    while (plain.ends_with('/')) plain.pop_back();
    return plain;
}

bool LiesWithin(const std::string& inner, const std::string& outer) {
    return inner.size() > outer.size() && inner.starts_with(outer) && inner[outer.size()] == '/';
}

struct Content {
    int64_t albums = 0, songs = 0;
};

std::string ContentText(const Content& content) {
    return Counted(content.albums, "album") + ", " + Counted(content.songs, "song");
}

// Keyed by the normalized music folders.
std::unordered_map<std::string, Content> ContentOfFolders(const MusicLibrary& library) {
    std::unordered_map<std::string, Content> contents;
    for (const Playlist& playlist : library.playlists) {
        if (playlist.songs.empty()) continue;
        Content& content = contents[Plain(FolderOf(FolderOf(playlist.songs.front().songPath)))];
        ++content.albums;
        content.songs += static_cast<int64_t>(playlist.songs.size());
    }
    return contents;
}

bool IsMissing(const std::string& folder, const MusicLibrary& library) {
    const std::vector<std::string>& missing = library.missingFolders;
    return std::find(missing.begin(), missing.end(), folder) != missing.end();
}

FolderRow EmptyRow(const std::string& folder, const MusicLibrary& library) {
    if (IsMissing(folder, library)) {
        return {folder, "Not found", "This folder is missing. When it is back, a rescan or restart finds its songs."};
    }
    return {folder, "No songs", "The folders inside it hold no songs.", true};
}

}  // namespace

std::vector<FolderRow> MakeFolderRows(const std::vector<std::string>& folders, const MusicLibrary& library,
                                      bool isScanning) {
    const std::unordered_map<std::string, Content> contents = ContentOfFolders(library);
    std::vector<FolderRow> rows;
    for (const std::string& folder : folders) {
        const auto found = contents.find(Plain(folder));
        if (found != contents.end()) {
            const char* const away = "This folder is missing. Its songs stay in the library until a rescan.";
            rows.push_back({folder, ContentText(found->second), IsMissing(folder, library) ? away : ""});
        } else {
            rows.push_back(isScanning ? FolderRow{folder, "Scanning", ""} : EmptyRow(folder, library));
        }
    }
    return rows;
}

bool IsSameFolder(const std::string& one, const std::string& other) {
    return Plain(one) == Plain(other);
}

FolderVerdict JudgeFolder(const std::vector<std::string>& folders, const std::string& added, bool isThere) {
    if (!isThere) return {false, "There is no such folder."};
    const std::string plain = Plain(added);
    FolderVerdict verdict{true, ""};
    for (const std::string& folder : folders) {
        const std::string other = Plain(folder);
        if (other == plain) return {false, "This folder is already in the list."};
        if (LiesWithin(plain, other)) verdict.remark = "It adds only its own subfolders, as it is inside " + folder;
        if (LiesWithin(other, plain))
            verdict.remark = "It contains a folder of the list, which keeps its albums: " + folder;
    }
    return verdict;
}

bool MoveFolder(std::vector<std::string>& folders, size_t at, int step) {
    const size_t to = at + static_cast<size_t>(step);  // one before the first wraps to far beyond the last
    if (at >= folders.size() || to >= folders.size()) return false;
    std::swap(folders[at], folders[to]);
    return true;
}

std::string LibraryText(std::optional<int32_t> foundByScan, const MusicLibrary& library) {
    if (foundByScan) return "Scanning: " + Counted(*foundByScan, "song") + " so far";
    const int64_t songs = SongCountOf(library);
    if (songs == 0) return "There is no music in the library.";
    return "In the library: " + ContentText({static_cast<int64_t>(library.playlists.size()), songs});
}

std::string SoundFontText(size_t count) {
    return count == 0 ? "No SoundFonts (.sf2) found." : Counted(static_cast<int64_t>(count), "SoundFont") + " found";
}

}  // namespace hullrider
