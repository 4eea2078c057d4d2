// Looks for albums where a scan does not: deeper than one level below a folder, and beside it. Any thread.
#pragma once

#include <cstdint>
#include <stop_token>
#include <string>
#include <vector>

namespace hullrider {

// Folders that would do as music folders: each holds albums directly inside it.
struct AlbumsFound {
    std::vector<std::string> folders;
    int64_t songs = 0;  // in all their albums
};

struct AlbumSearch {
    bool isReadable = false;  // the folder itself
    int64_t ownSongs = 0;     // directly in the folder, which then is an album
    int64_t files = 0;        // of any kind, as deep as was looked
    AlbumsFound below;        // the folder itself is never among them
    AlbumsFound beside;       // its parent, if the folder is an album; empty otherwise
    std::string error;        // the system's text when it is not readable
};

inline constexpr int kAlbumSearchDepth = 4;  // levels below the folder

// Of a folder that holds no album one level below. What cannot be read further down is skipped. Ends early, with what
// was found, when it is told to stop.
AlbumSearch SearchAlbums(const std::string& folder, const std::stop_token& stop);

}  // namespace hullrider
