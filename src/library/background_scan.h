// A scan of the music folders on a thread of its own, so that neither the window nor the music waits for a slow disk.
// UI thread.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "state/music_library.h"

namespace hullrider {

struct FoundMusic {
    MusicLibrary library;                     // what the scan fills, counted from 0
    std::vector<std::string> favoritesFiles;  // that it has met, in their order
};

class BackgroundScan {
public:
    explicit BackgroundScan(std::vector<std::string> directoryPaths);
    ~BackgroundScan();  // gives the scan up without waiting for it: its thread touches nothing but what it owns
    BackgroundScan(const BackgroundScan&) = delete;
    BackgroundScan& operator=(const BackgroundScan&) = delete;

    int32_t SongsFound() const;
    bool IsOver() const;

    // What was found, once it is over. Nothing when the scan has failed, which is one line on the error stream.
    std::optional<FoundMusic> Take();

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
};

}  // namespace hullrider
