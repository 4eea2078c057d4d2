// A scan of the music folders on a thread of its own, so that neither the window nor the music waits for a slow disk.
// UI thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "library/scan.h"
#include "platform/worker.h"
#include "state/music_library.h"

namespace hullrider {

struct FoundMusic {
    MusicLibrary library;                     // filled by the scan, its counters from 0
    std::vector<std::string> favoritesFiles;  // found on the way, in order
};

// Scans the folders on the calling thread.
FoundMusic FindMusic(const std::vector<std::string>& directoryPaths, ScanProgress* progress = nullptr);

class BackgroundScan {
public:
    // A scan that nobody waits for leaves the processor and the disk to other threads.
    enum class Haste { kWaitedFor, kBeside };
    // The destructor abandons the scan without waiting for it: the worker touches only what it owns.
    BackgroundScan(std::vector<std::string> directoryPaths, Haste haste);
    BackgroundScan(const BackgroundScan&) = delete;
    BackgroundScan& operator=(const BackgroundScan&) = delete;

    int32_t SongsFound() const;
    bool IsOver() const;
    bool WaitUntilOver(std::chrono::milliseconds timeout) const;  // false after a timeout

    // What was found, once it is over. Nothing when the scan failed, with a line on the error stream, or was stopped
    // because the program ends.
    std::optional<FoundMusic> Take();

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
    Worker worker_;
};

}  // namespace hullrider
