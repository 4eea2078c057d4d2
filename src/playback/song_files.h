// Which songs' files are there, for one search through many songs: what lies below a folder that is gone is not asked
// for one by one, because a disk or a network share that went away takes its time for every answer. When the answers
// have taken a second all the same, no more is asked: the window must not freeze.
#pragma once

#include <chrono>
#include <string>
#include <unordered_set>

#include "playback/draws.h"

namespace hullrider {

class SongFiles {
public:
    explicit SongFiles(const Draws& draws) : fileExists_(draws.fileExists), folderExists_(draws.folderExists) {}

    // False also for a file that was not asked for any more.
    bool Exists(const std::string& path);

    // Another second for another search.
    void RenewPatience() { waited_ = {}; }

private:
    bool Ask(bool (*question)(const std::string&), const std::string& path);
    bool IsGone(const std::string& folder);

    bool (*fileExists_)(const std::string&);
    bool (*folderExists_)(const std::string&);
    std::chrono::steady_clock::duration waited_{};
    std::unordered_set<std::string> gone_, there_;  // folders that were looked at
};

}  // namespace hullrider
