#include "app/listening_files.h"

#include "library/play_counts.h"
#include "library/song_history.h"
#include "library/statistics.h"
#include "platform/paths.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

std::string StatisticsPath(const AppState& app) {
    return StatePath(app.shell.dataDirectory, kStatisticsFile);
}

std::string PlayCountsPath(const AppState& app) {
    return StatePath(app.shell.dataDirectory, kPlayCountsFile);
}

std::string SongHistoryPath(const AppState& app) {
    return StatePath(app.shell.dataDirectory, kSongHistoryFile);
}

}  // namespace

void LoadStatisticsFile(AppState& app) {
    LoadStatistics(StatisticsPath(app), app.statistics);
    CountStart(app.statistics);
}

void SaveStatisticsFile(const AppState& app) {
    SaveStatistics(StatisticsPath(app), app.statistics);
}

void LoadPlayCountsFile(AppState& app) {
    LoadPlayCounts(PlayCountsPath(app), app.playCounts);
    MergePlayCounts(app.library, app.playCounts);
}

void SavePlayCountsFile(const AppState& app) {
    SavePlayCounts(PlayCountsPath(app), app.playCounts);
}

void LoadSongHistoryFile(AppState& app) {
    LoadSongHistory(SongHistoryPath(app), app.history);
    FindHistoryInLibrary(app.history, app.library);
}

void SaveSongHistoryFile(const AppState& app) {
    SaveSongHistory(SongHistoryPath(app), app.history);
}

}  // namespace hullrider
