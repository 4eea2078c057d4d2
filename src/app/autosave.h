// Saves settings, shell options, favorites, stations, history, play counts and statistics soon after they change, so
// that a crash or a power cut costs seconds and not the whole run. UI thread, except for the writer thread.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "library/song_history.h"
#include "state/app_state.h"

namespace hullrider {

// Formats files and writes them, one after another, on its own thread. A file that already holds the text is not
// rewritten.
class FileWriter {
public:
    FileWriter() = default;
    ~FileWriter() { Finish(); }
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    // Queues a write and replaces one of the same file that still waits. `makeText` runs on the writer thread and must
    // own all that it reads.
    void Write(const std::string& path, std::function<std::string()> makeText);

    // Waits for the write in progress and drops the others: the caller then writes every file.
    void Finish();

    bool IsIdle() const;

private:
    struct Order {
        std::string path;
        std::function<std::string()> makeText;
    };

    void Run();

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Order> orders_;
    bool isWriting_ = false;
    bool isEnding_ = false;
    std::thread thread_;
};

class Autosave {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::seconds kPeriod{2};

    // Queues what has changed since the last look; looks at most once per kPeriod.
    void Poll(const AppState& app, Clock::time_point now);

    // Call before anyone else writes the files.
    void Finish() { writer_.Finish(); }

    bool IsIdle() const { return writer_.IsIdle(); }

private:
    void Look(const AppState& app);

    FileWriter writer_;
    std::optional<Clock::time_point> lastLook_;

    // As of the last look; empty before the first one.
    std::optional<Settings> settings_;
    std::optional<ShellOptions> shellOptions_;
    std::optional<StatisticsCounts> statistics_;
    std::optional<HistoryMark> history_;
    std::optional<uint64_t> favorites_, playCounts_, stations_;
};

}  // namespace hullrider
