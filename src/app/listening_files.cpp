#include "app/listening_files.h"

#include "library/play_counts.h"
#include "library/song_history.h"
#include "library/statistics.h"
#include "platform/paths.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

std::string StatisticsPath(const AppState& state) {
    return StatePath(state.shell.dataDirectory, kStatisticsFile);
}

std::string PlayCountsPath(const AppState& state) {
    return StatePath(state.shell.dataDirectory, kPlayCountsFile);
}

std::string SongHistoryPath(const AppState& state) {
    return StatePath(state.shell.dataDirectory, kSongHistoryFile);
}

}  // namespace

void LoadStatisticsFile(AppState& state) {
    LoadStatistics(StatisticsPath(state), state.statistics);
    CountStart(state.statistics);
}

void SaveStatisticsFile(const AppState& state) {
    SaveStatistics(StatisticsPath(state), state.statistics);
}

void LoadPlayCountsFile(AppState& state) {
    LoadPlayCounts(PlayCountsPath(state), state.playCounts);
    MergePlayCounts(state.library, state.playCounts);
}

void SavePlayCountsFile(const AppState& state) {
    SavePlayCounts(PlayCountsPath(state), state.playCounts);
}

void LoadSongHistoryFile(AppState& state) {
    LoadSongHistory(SongHistoryPath(state), state.history);
    FindHistoryInLibrary(state.history, state.library);
}

void SaveSongHistoryFile(const AppState& state) {
    SaveSongHistory(SongHistoryPath(state), state.history);
}

}  // namespace hullrider
