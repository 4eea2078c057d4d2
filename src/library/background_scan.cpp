#include "library/background_scan.h"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <stop_token>
#include <utility>

#include "platform/console.h"
#include "platform/thread_priority.h"

namespace hullrider {

struct BackgroundScan::Shared {
    std::vector<std::string> directoryPaths;
    Haste haste = Haste::kWaitedFor;
    ScanProgress progress;
    std::optional<FoundMusic> found;  // the worker's while the scan runs
    std::atomic<bool> isOver{false};
    std::mutex mutex;
    std::condition_variable over;

    void Run(const std::stop_token& stop) {
        const std::stop_callback giveUp(stop, [this] { progress.isUnwanted = true; });
        if (haste == Haste::kBeside) LowerThreadPriority();
        try {
            FoundMusic music = FindMusic(directoryPaths, &progress);
            if (!stop.stop_requested()) found = std::move(music);
        } catch (const std::exception& failure) {
            PrintErrorLine(std::string("The scan of the music folders failed: ") + failure.what());
        }
        const std::lock_guard lock(mutex);
        isOver = true;
        over.notify_all();
    }
};

FoundMusic FindMusic(const std::vector<std::string>& directoryPaths, ScanProgress* progress) {
    FoundMusic music;
    const auto keep = [&](const std::string& path) { music.favoritesFiles.push_back(path); };
    ScanMusicFolders(music.library, directoryPaths, keep, progress);
    return music;
}

BackgroundScan::BackgroundScan(std::vector<std::string> directoryPaths, Haste haste)
    : shared_(std::make_shared<Shared>()) {
    shared_->directoryPaths = std::move(directoryPaths);
    shared_->haste = haste;
    if (worker_.Start([shared = shared_](const std::stop_token& stop) { shared->Run(stop); })) return;
    PrintErrorLine("No thread could be started for the scan of the music folders.");
    shared_->isOver = true;
}

int32_t BackgroundScan::SongsFound() const {
    return shared_->progress.songsFound;
}

bool BackgroundScan::IsOver() const {
    return shared_->isOver;
}

bool BackgroundScan::WaitUntilOver(std::chrono::milliseconds timeout) const {
    std::unique_lock lock(shared_->mutex);
    return shared_->over.wait_for(lock, timeout, [this] { return shared_->isOver.load(); });
}

std::optional<FoundMusic> BackgroundScan::Take() {
    return IsOver() ? std::exchange(shared_->found, std::nullopt) : std::nullopt;
}

}  // namespace hullrider
