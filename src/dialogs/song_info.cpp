#include "dialogs/song_info.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <span>
#include <utility>

#include "library/song_counts.h"
#include "library/type_names.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr size_t kMostRows = 100;

std::string Number(int64_t value) {
    return FormatWithThousands(value);
}

TextRow KindRow(const char* name, int64_t inLibrary, const Played& thisRun, const Played& allTime) {
    return {name,
            Number(inLibrary),
            Number(thisRun.count),
            HoursText(thisRun.seconds),
            Number(allTime.count),
            HoursText(allTime.seconds)};
}

Played Total(const StatisticsCounts& counts) {
    Played total;
    for (const Played& played : counts.byType) {
        total.count += played.count;
        total.seconds += played.seconds;
    }
    return total;
}

std::vector<TextRow> KindRows(const MusicLibrary& library, const StatisticsCounts& run, const StatisticsCounts& all) {
    const std::array<int64_t, 4> inLibrary{library.midiSongCount, library.mp3SongCount, library.trackerSongCount,
                                           library.internetStationCount};
    std::vector<TextRow> rows;
    for (size_t i = 0; i < kTypeNames.size(); ++i) {
        rows.push_back(KindRow(kTypeNames[i].many, inLibrary[i], run.byType[i], all.byType[i]));
    }
    rows.push_back(
        KindRow("All", int64_t{library.typedSongCount} + library.internetStationCount, Total(run), Total(all)));
    rows.push_back(KindRow("Favorites among them", library.favoriteSongCount, run.favorites, all.favorites));
    return rows;
}

std::array<double, 4> TimeShare(const StatisticsCounts& counts) {
    std::array<double, 4> share{};
    const double total = Total(counts).seconds;
    if (total <= 0.0) return share;
    for (size_t i = 0; i < share.size(); ++i) share[i] = counts.byType[i].seconds / total;
    return share;
}

std::string TitleOf(const std::string& songPath) {
    return Utf8FromPath(PathFromUtf8(songPath).stem());
}

std::string AlbumOf(const std::string& songPath) {
    return Utf8FromPath(PathFromUtf8(songPath).parent_path().filename());
}

std::vector<TextRow> MostPlayed(const PlayCounts& counts) {
    using Entry = std::pair<const std::string, int32_t>;
    std::vector<const Entry*> entries;
    for (const Entry& entry : counts.byPath) {
        if (entry.second > 0) entries.push_back(&entry);
    }
    const size_t rowCount = std::min(kMostRows, entries.size());
    std::partial_sort(entries.begin(), entries.begin() + static_cast<ptrdiff_t>(rowCount), entries.end(),
                      [](const Entry* one, const Entry* other) {
                          return one->second != other->second ? one->second > other->second : one->first < other->first;
                      });
    std::vector<TextRow> rows;
    for (const Entry* entry : std::span(entries).first(rowCount)) {
        rows.push_back({TitleOf(entry->first), AlbumOf(entry->first), Number(entry->second)});
    }
    return rows;
}

// A station that was removed from the list is shown by its URL.
std::string StationName(const RadioState& radio, const std::string& url) {
    const auto found = std::find_if(radio.stations.begin(), radio.stations.end(),
                                    [&](const InternetStation& station) { return station.url == url; });
    return found == radio.stations.end() ? url : found->name;
}

std::vector<TextRow> Recent(const AppState& app, int64_t now) {
    const SongHistory& history = app.history;
    std::vector<TextRow> rows;
    for (size_t at = history.records.size(); at-- > 0 && rows.size() < kMostRows;) {
        const HistoryRecord& record = history.records[at];
        const bool plays = at == history.cursor && app.playback.item.kind != PlayItem::Kind::kNone;
        TextRow row{plays ? "now" : WhenText(record.startedAt, now)};
        if (record.type == kInternetRadio) {
            row.insert(row.end(), {StationName(app.radio, record.path), kTypeNames[kInternetRadio].many});
        } else {
            row.insert(row.end(), {record.title.empty() ? TitleOf(record.path) : record.title, AlbumOf(record.path)});
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string Line(std::span<const std::string> texts) {
    std::string line;
    for (const std::string& text : texts) line += (line.empty() ? "" : "\t") + text;
    return line + "\n";
}

std::string PlayingText(const PlayingInfo& playing) {
    std::string text;
    for (size_t i = 0; i < playing.size(); ++i) {
        if (!playing[i].empty()) text += std::string(kPlayingNames[i]) + "\t" + playing[i] + "\n";
    }
    return text.empty() ? text : text + "\n";
}

template <size_t columns>
std::string Table(const std::array<const char*, columns>& headings, const std::vector<TextRow>& rows) {
    const TextRow heading(headings.begin(), headings.end());
    std::string text = "\n" + Line(heading);
    for (const TextRow& row : rows) text += Line(row);
    return text;
}

}  // namespace

std::string HoursText(double seconds) {
    const auto minutes = static_cast<int64_t>(std::max(seconds, 0.0) / 60.0);
    const std::string rest = std::to_string(minutes % 60);
    return Number(minutes / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

std::string WhenText(int64_t seconds, int64_t now) {
    if (seconds <= 0) return {};
    const auto local = [](int64_t time) {
        const auto systemTime = static_cast<std::time_t>(time);
        const std::tm* const broken = std::localtime(&systemTime);
        return broken == nullptr ? std::tm{} : *broken;
    };
    const std::tm when = local(seconds), today = local(now);
    const bool isToday = when.tm_year == today.tm_year && when.tm_yday == today.tm_yday;
    std::array<char, 40> text{};
    std::strftime(text.data(), text.size(), isToday ? "%H:%M" : "%Y-%m-%d %H:%M", &when);
    return text.data();
}

SongInfo MakeSongInfo(const AppState& app, const Statistics& statistics, int64_t now) {
    SongInfo info;
    UpdateSongInfo(info, app, statistics, now);
    return info;
}

void UpdateSongInfo(SongInfo& info, const AppState& app, const Statistics& statistics, int64_t now) {
    const MusicLibrary& library = app.library;
    const StatisticsCounts& run = statistics.thisRun;
    const StatisticsCounts& all = statistics.allTime;
    info.kinds = KindRows(library, run, all);
    info.timeShare = TimeShare(all);
    info.library = "Library: " + Counted(library.typedSongCount, "song") + " in " +
                   Counted(library.numberOfPlaylists, "playlist") + ", " +
                   Counted(library.favoriteSongCount, "favorite");
    info.thisRun = "This run: " + Counted(run.skips, "item") + " skipped";
    info.allTime = "All time: started " + Counted(all.starts, "time") + ", " + Counted(all.skips, "item") + " skipped";
    info.recent = Recent(app, now);
    if (const int64_t plays = Total(all).count; info.plays != plays) {
        info.mostPlayed = MostPlayed(app.playCounts);
        info.plays = plays;
    }
}

std::string SongInfoText(const SongInfo& info) {
    return PlayingText(info.playing) + info.library + "\n" + info.thisRun + "\n" + info.allTime + "\n" +
           Table(kKindColumns, info.kinds) + Table(kMostPlayedColumns, info.mostPlayed) +
           Table(kRecentColumns, info.recent);
}

}  // namespace hullrider
