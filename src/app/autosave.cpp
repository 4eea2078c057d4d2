#include "app/autosave.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "app/library_loading.h"
#include "app/settings_file.h"
#include "app/shell_options_file.h"
#include "library/favorites_file.h"
#include "library/play_counts.h"
#include "library/statistics.h"
#include "platform/console.h"
#include "platform/paths.h"
#include "platform/state_files.h"
#include "radio/stations_file.h"

namespace hullrider {

namespace {

template <typename Record>
bool Changes(std::optional<Record>& seen, const Record& now) {
    if (seen && *seen == now) return false;
    seen = now;
    return true;
}

void WriteIfDifferent(const std::string& path, const std::string& text) {
    std::string error;
    if (ReadStateFile(path, kMostStateBytes, error) != text) SaveStateFile(path, text);
}

}  // namespace

void FileWriter::Write(const std::string& path, std::function<std::string()> makeText) {
    const std::lock_guard lock(mutex_);
    const auto earlier =
        std::find_if(orders_.begin(), orders_.end(), [&path](const Order& order) { return order.path == path; });
    if (earlier != orders_.end()) {
        earlier->makeText = std::move(makeText);
    } else {
        orders_.push_back({path, std::move(makeText)});
    }
    if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
    wake_.notify_one();
}

void FileWriter::Finish() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
        orders_.clear();
    }
    wake_.notify_one();
    if (thread_.joinable()) thread_.join();
    isEnding_ = false;
}

bool FileWriter::IsIdle() const {
    const std::lock_guard lock(mutex_);
    return orders_.empty() && !isWriting_;
}

void FileWriter::Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return isEnding_ || !orders_.empty(); });
        if (isEnding_) return;
        const Order order = std::move(orders_.front());
        orders_.pop_front();
        isWriting_ = true;
        lock.unlock();
        try {
            WriteIfDifferent(order.path, order.makeText());
        } catch (const std::exception& failure) {
            PrintErrorLine("Failed to write " + order.path + ": " + failure.what());
        }
        lock.lock();
        isWriting_ = false;
    }
}

void Autosave::Poll(const AppState& app, Clock::time_point now) {
    if (lastLook_ && now - *lastLook_ < kPeriod) return;
    lastLook_ = now;
    Look(app);
}

// The writer thread gets copies: formatting a large file would block the UI thread for too long.
void Autosave::Look(const AppState& app) {
    const auto write = [&](const char* name, auto makeText) {
        writer_.Write(StatePath(app.shell.dataDirectory, name), std::move(makeText));
    };
    if (const Settings settings = SettingsToKeep(app); Changes(settings_, settings)) {
        write(kSettingsFile, [settings] { return SettingsText(settings); });
    }
    if (const ShellOptions options = OptionsToKeep(app); Changes(shellOptions_, options)) {
        write(kShellOptionsFile, [options] { return ShellOptionsText(options); });
    }
    if (Changes(statistics_, app.statistics.allTime)) {
        write(kStatisticsFile, [counts = app.statistics.allTime] { return StatisticsText(counts); });
    }
    if (Changes(favorites_, app.favorites.revision)) {
        write(kFavoritesFile, [list = app.favorites.list] { return FavoritesText(list); });
    }
    if (Changes(stations_, app.radio.revision)) {
        write(kStationsFile, [stations = app.radio.stations] { return InternetStationsText(stations); });
    }
    if (Changes(playCounts_, app.playCounts.revision)) {
        write(kPlayCountsFile, [list = ListOf(app.playCounts)]() mutable { return PlayCountsText(std::move(list)); });
    }
    if (Changes(history_, MarkOf(app.history))) {
        write(kSongHistoryFile, [records = app.history.records] { return SongHistoryText(records); });
    }
}

}  // namespace hullrider
