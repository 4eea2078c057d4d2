// Which songs' files are there, for one search through many songs: what lies below a folder that is gone is not asked
// for one by one, because a disk or a network share that went away takes its time for every answer.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "playback/draws.h"

namespace hullrider {

class SongFiles {
public:
    explicit SongFiles(const Draws& draws) : fileExists_(draws.fileExists), folderExists_(draws.folderExists) {}

    bool Exists(const std::string& path);

private:
    bool IsGone(const std::string& folder);

    bool (*fileExists_)(const std::string&);
    bool (*folderExists_)(const std::string&);
    std::unordered_set<std::string> gone_, there_;  // folders that were looked at
};

}  // namespace hullrider
