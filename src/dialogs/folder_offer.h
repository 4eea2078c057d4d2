// What to do about a music folder in which a scan finds nothing. Pure; any thread.
#pragma once

#include <string>
#include <vector>

#include "library/album_search.h"

namespace hullrider {

struct FolderOffer {
    std::string remark;                // one line: why nothing was found, and what to do
    std::string button;                // what a click does; empty: there is nothing to offer
    std::vector<std::string> folders;  // that take the place of the one without songs
};

// `listed`: the music folders that there are already.
FolderOffer MakeFolderOffer(const AlbumSearch& search, const std::vector<std::string>& listed);

// The text of a path with at most `most` letters: its beginning gives way to "...".
std::string ShortPath(const std::string& path, size_t most);

}  // namespace hullrider
