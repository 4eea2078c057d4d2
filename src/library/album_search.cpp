#include "library/album_search.h"

#include "library/music_type.h"
#include "platform/folder.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

struct Listing {
    int64_t songs = 0, files = 0;
    std::vector<std::string> folders;
    std::string error;  // empty: it was read
};

Listing List(const std::string& folder) {
    Listing listing;
    const auto take = [&](const FolderEntry& entry) {
        if (!entry.nameIsText) return;
        if (entry.kind == EntryKind::kFolder) listing.folders.push_back(JoinPath(folder, entry.name));
        if (entry.kind != EntryKind::kFile) return;
        ++listing.files;
        if (MusicTypeOf(entry.name) != kUnsupported) ++listing.songs;
    };
    std::string error;
    if (!ListFolder(folder, take, error)) listing.error = error.empty() ? "unknown error" : error;
    return listing;
}

// Searches the folders in `listing` and those below them. Returns the number of songs directly in them.
int64_t SearchBelow(const Listing& listing, int levels, const std::stop_token& stop, AlbumSearch& search) {
    int64_t inAlbums = 0;
    for (const std::string& folder : listing.folders) {
        if (stop.stop_requested()) break;
        const Listing inside = List(folder);
        inAlbums += inside.songs;
        search.files += inside.files;
        if (levels <= 1) continue;
        const size_t place = search.below.folders.size();
        const int64_t songs = SearchBelow(inside, levels - 1, stop, search);
        if (songs == 0) continue;
        search.below.folders.insert(search.below.folders.begin() + static_cast<ptrdiff_t>(place), folder);
        search.below.songs += songs;
    }
    return inAlbums;
}

// The folder's parent, with the songs of all albums in it.
AlbumsFound ParentOf(const std::string& folder, const std::stop_token& stop) {
    const std::string parent = Utf8FromPath(PathFromUtf8(folder).parent_path());
    if (parent.empty() || parent == folder) return {};
    AlbumsFound found{{parent}, 0};
    for (const std::string& album : List(parent).folders) {
        if (stop.stop_requested()) break;
        found.songs += List(album).songs;
    }
    return found;
}

}  // namespace

AlbumSearch SearchAlbums(const std::string& folder, const std::stop_token& stop) {
    AlbumSearch search;
    const Listing own = List(folder);
    search.error = own.error;
    search.isReadable = own.error.empty();
    search.ownSongs = own.songs;
    search.files = own.files;
    SearchBelow(own, kAlbumSearchDepth, stop, search);
    if (own.songs > 0) search.beside = ParentOf(AbsolutePath(folder), stop);
    return search;
}

}  // namespace hullrider
