#include "library/background_scan.h"

#include <atomic>
#include <exception>
#include <thread>
#include <utility>

#include "library/scan.h"
#include "platform/console.h"

namespace hullrider {

struct BackgroundScan::Shared {
    std::vector<std::string> directoryPaths;
    ScanProgress progress;
    std::optional<FoundMusic> found;  // the thread's until the scan is over
    std::atomic<bool> isOver{false};

    void Run() {
        try {
            FoundMusic music;
            const auto keep = [&](const std::string& path) { music.favoritesFiles.push_back(path); };
            ScanMusicFolders(music.library, directoryPaths, keep, &progress);
            found = std::move(music);
        } catch (const std::exception& failure) {
            PrintErrorLine(std::string("The scan of the music folders failed: ") + failure.what());
        }
        isOver = true;
    }
};

BackgroundScan::BackgroundScan(std::vector<std::string> directoryPaths) : shared_(std::make_shared<Shared>()) {
    shared_->directoryPaths = std::move(directoryPaths);
    std::thread([shared = shared_] { shared->Run(); }).detach();
}

BackgroundScan::~BackgroundScan() {
    shared_->progress.isUnwanted = true;
}

int32_t BackgroundScan::SongsFound() const {
    return shared_->progress.songsFound;
}

bool BackgroundScan::IsOver() const {
    return shared_->isOver;
}

std::optional<FoundMusic> BackgroundScan::Take() {
    return IsOver() ? std::exchange(shared_->found, std::nullopt) : std::nullopt;
}

}  // namespace hullrider
