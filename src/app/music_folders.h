// Where the music of a run comes from, and the scan of it that is under way.
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
    kWorkingFolder,  // of last resort: "Music" in the folder that the program was started in
};

struct MusicFolders {
    MusicSource source = MusicSource::kNone;
    std::vector<std::string> paths;
};

enum class ScanReason {
    kStart,           // every start looks for what came, went or moved
    kFoldersChanged,  // the user has added a folder or taken one out
    kAskedFor,        // the user wants the library to be what there is now
};

struct FolderScan {
    MusicFolders folders;
    ScanReason reason = ScanReason::kStart;
    std::unique_ptr<BackgroundScan> thread;  // null: no scan is under way
};

}  // namespace hullrider
