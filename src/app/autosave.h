// Writes what the user would miss soon after it has changed, so that a crash or a power cut costs seconds and not the
// whole run: settings, shell options, favorites, history, play counts and statistics. UI thread, but for the thread
// that writes.
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

// Makes texts and writes them to their files on a thread of its own, one after the other. What a file holds already is
// not written again.
class FileWriter {
public:
    FileWriter() = default;
    ~FileWriter() { Finish(); }
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    // `makeText` must hold all that it reads. Takes the place of an earlier order for the file that still waits.
    void Write(const std::string& path, std::function<std::string()> makeText);

    // Waits for the file that is being written and drops the others: the caller writes them all.
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

    // Has written what has changed since the last look, no more often than the period says.
    void Poll(const AppState& app, Clock::time_point now);

    // Due before anyone else writes the files.
    void Finish() { writer_.Finish(); }

    bool IsIdle() const { return writer_.IsIdle(); }

private:
    void Look(const AppState& app);

    FileWriter writer_;
    std::optional<Clock::time_point> lastLook_;

    // As of the last look; nothing before the first one.
    std::optional<Settings> settings_;
    std::optional<ShellOptions> shellOptions_;
    std::optional<StatisticsCounts> statistics_;
    std::optional<HistoryMark> history_;
    std::optional<uint64_t> favorites_, playCounts_;
};

}  // namespace hullrider
