#include "library/song_history.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "library/song_counts.h"
#include "library/state_json.h"
#include "platform/json.h"
#include "state/play_item.h"

namespace hullrider {

namespace {

using Json = nlohmann::json;

HistoryKey KeyOf(const HistoryRecord& record) {
    return {record.type, record.playlist, record.song};
}

bool IsSong(const HistoryRecord& record) {
    return record.type >= kMidi && record.type <= kTracker;
}

// The number of the pick at that index.
uint64_t PickAt(const SongHistory& history, size_t index) {
    return history.picks - history.records.size() + index + 1;
}

void DropOldest(SongHistory& history) {
    const auto last = history.lastPick.find(KeyOf(history.records.front()));
    if (last != history.lastPick.end() && last->second == PickAt(history, 0)) history.lastPick.erase(last);
    history.records.pop_front();
    if (history.cursor > 0) --history.cursor;
}

void NumberPicks(SongHistory& history) {
    history.lastPick.clear();
    for (size_t i = 0; i < history.records.size(); ++i) {
        if (history.records[i].playlist >= 0) history.lastPick[KeyOf(history.records[i])] = PickAt(history, i);
    }
}

std::optional<HistoryRecord> RecordFrom(const Json& object) {
    if (!object.is_object()) return std::nullopt;
    const auto path = object.find("path");
    const int64_t type = CountIn(object, "type");
    if (path == object.end() || !path->is_string() || type >= static_cast<int64_t>(kItemTypes)) return std::nullopt;
    HistoryRecord record;
    record.type = static_cast<int32_t>(type);
    record.path = path->get<std::string>();
    record.startedAt = CountIn(object, "startedAt");
    record.playedSec = SecondsIn(object, "playedSec");
    const auto title = object.find("title");
    if (title != object.end() && title->is_string()) record.title = title->get<std::string>();
    return record;
}

}  // namespace

void ReportPick(SongHistory& history, HistoryRecord record) {
    history.records.push_back(std::move(record));
    ++history.picks;
    if (history.records.back().playlist >= 0) history.lastPick[KeyOf(history.records.back())] = history.picks;
    while (history.records.size() > kMostHistory) DropOldest(history);
    history.cursor = history.records.size() - 1;
}

uint64_t LastPickOf(const SongHistory& history, const HistoryKey& key) {
    const auto last = history.lastPick.find(key);
    return last == history.lastPick.end() ? 0 : last->second;
}

bool WasPickedLately(const SongHistory& history, const HistoryKey& key, int32_t depth) {
    const uint64_t last = depth < 0 ? 0 : LastPickOf(history, key);
    return last > 0 && history.picks - last < static_cast<uint64_t>(depth);
}

void FindHistoryInLibrary(SongHistory& history, const MusicLibrary& library) {
    std::unordered_map<std::string_view, SongPosition> places;
    for (const HistoryRecord& record : history.records) {
        if (IsSong(record)) places[record.path] = {-1, -1};
    }
    for (size_t i = 0; i < library.playlists.size() && !places.empty(); ++i) {
        const std::vector<Song>& songs = library.playlists[i].songs;
        for (size_t j = 0; j < songs.size(); ++j) {
            const auto found = places.find(songs[j].songPath);
            if (found == places.end() || (library.playlists[i].isQueue && found->second.playlist >= 0)) continue;
            found->second = {static_cast<int32_t>(i), static_cast<int32_t>(j)};
        }
    }
    for (HistoryRecord& record : history.records) {
        if (!IsSong(record)) continue;
        const SongPosition& place = places.at(record.path);
        record.playlist = place.playlist;
        record.song = place.song;
    }
    NumberPicks(history);
}

StateReading ReadSongHistory(std::string_view text, SongHistory& history, std::string& error) {
    SongHistory read;
    size_t dropped = 0;
    const auto take = [&](const std::string& /*name*/, const Json& song) {
        std::optional<HistoryRecord> record = RecordFrom(song);
        if (record) read.records.push_back(std::move(*record));
        dropped += record ? 0 : 1;
        if (read.records.size() > kMostHistory) read.records.pop_front();
        return size_t{0};  // their number is limited instead
    };
    const JsonWalk walk = WalkJson(text, "songs", JsonKind::kList, take);
    error = walk.error;
    if (error.empty() && !walk.found) error = "it contains no list of songs";
    if (error.empty() && dropped > 0) error = "invalid entries: " + std::to_string(dropped);
    if (!walk.found) return StateReading::kUnreadable;
    read.picks = read.records.size();
    read.cursor = read.records.size();
    history = std::move(read);
    return error.empty() ? StateReading::kWhole : StateReading::kPartly;
}

HistoryMark MarkOf(const SongHistory& history) {
    HistoryMark mark{history.picks, history.records.size(), history.cursor, 0, 0.0};
    if (history.cursor < history.records.size()) {
        mark.startedAt = history.records[history.cursor].startedAt;
        mark.playedSec = history.records[history.cursor].playedSec;
    }
    return mark;
}

std::string SongHistoryText(const std::deque<HistoryRecord>& records) {
    std::string text = "{\"songs\":[";
    for (size_t i = 0; i < records.size(); ++i) {
        const HistoryRecord& record = records[i];
        const nlohmann::ordered_json object = {{"path", record.path},
                                               {"type", record.type},
                                               {"startedAt", record.startedAt},
                                               {"playedSec", record.playedSec},
                                               {"title", record.title}};
        text += i == 0 ? "\n" : ",\n";
        text += object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    }
    return text + "\n]}\n";
}

bool LoadSongHistory(const std::string& path, SongHistory& history) {
    const auto read = [&](std::string_view text, std::string& error) { return ReadSongHistory(text, history, error); };
    return LoadStateFile(path, {}, read) != StateReading::kUnreadable;
}

bool SaveSongHistory(const std::string& path, const SongHistory& history) {
    return SaveStateFile(path, SongHistoryText(history.records));
}

}  // namespace hullrider
