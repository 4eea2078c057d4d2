// Where the music of a run comes from, and the running scan.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "library/background_scan.h"

namespace hullrider {

enum class MusicSource {
    kNone,
    kGiven,          // for this run only
    kConfigured,     // by the user
    kFallback,       // for a user who has configured none
    kWorkingFolder,  // last resort: "Music" in the working directory
};

struct MusicFolders {
    MusicSource source = MusicSource::kNone;
    std::vector<std::string> paths;
};

enum class ScanReason {
    kStart,           // every start looks for added, removed and moved songs
    kFoldersChanged,  // the user has added or removed a folder
    kAskedFor,        // the user asked for a rescan
};

struct FolderScan {
    MusicFolders folders;
    ScanReason reason = ScanReason::kStart;
    std::unique_ptr<BackgroundScan> thread;  // null: no scan is running
};

}  // namespace hullrider
