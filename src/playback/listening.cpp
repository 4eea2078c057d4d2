#include "playback/listening.h"

#include <algorithm>

#include "library/play_counts.h"
#include "library/statistics.h"
#include "platform/play_clock.h"
#include "playback/candidates.h"
#include "playback/pick.h"

namespace hullrider {

namespace {

constexpr double kCountedAfterSec = 5.0;

bool IsFavoritePlaying(const AppState& app) {
    const Song* const song = PlayingSong(app);
    return song != nullptr && IsFavorite(*song);
}

HistoryRecord* PlayingRecord(SongHistory& history) {
    return history.cursor < history.records.size() ? &history.records[history.cursor] : nullptr;
}

// Since listening began or continued.
double SecondsHeard(const PlaybackState& playback) {
    return std::chrono::duration<double>(PlayNow() - playback.heardSince).count();
}

int64_t SecondsSince1970() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

}  // namespace

void BeginListening(AppState& app) {
    app.playback.heardSec = 0.0;
    app.playback.playIsCounted = false;
    HistoryRecord* const record = PlayingRecord(app.history);
    if (record != nullptr && record->startedAt == 0) record->startedAt = SecondsSince1970();
    ContinueListening(app.playback);
}

void CountPlayOnceHeard(AppState& app) {
    PlaybackState& playback = app.playback;
    if (playback.playIsCounted || !playback.itemIsHeard) return;
    const double enoughSec = std::min(kCountedAfterSec, (playback.endSec - playback.startSec) / 2.0);
    if (playback.heardSec + SecondsHeard(playback) < enoughSec) return;
    playback.playIsCounted = true;
    if (Song* const song = PlayingSong(app)) CountPlay(*song, app.playCounts);
    CountPlayed(app.statistics, playback.item.type, IsFavoritePlaying(app));
}

void EndListening(AppState& app) {
    PlaybackState& playback = app.playback;
    if (!playback.itemIsHeard) return;
    CountPlayOnceHeard(app);
    playback.itemIsHeard = false;
    const double seconds = SecondsHeard(playback);
    playback.heardSec += seconds;
    CountHeard(app.statistics, playback.item.type, IsFavoritePlaying(app), seconds);
    if (HistoryRecord* const record = PlayingRecord(app.history)) record->playedSec += std::max(seconds, 0.0);
}

void ContinueListening(PlaybackState& playback) {
    playback.itemIsHeard = true;
    playback.heardSince = PlayNow();
}

Statistics StatisticsSoFar(const AppState& app) {
    Statistics statistics = app.statistics;
    if (app.playback.itemIsHeard) {
        CountHeard(statistics, app.playback.item.type, IsFavoritePlaying(app), SecondsHeard(app.playback));
    }
    return statistics;
}

}  // namespace hullrider
