#include "library/song_history.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "library/song_counts.h"
#include "library/state_json.h"

namespace hullrider {

namespace {

constexpr int32_t kLastType = 3;

using Json = nlohmann::json;

// The song's place in the library as one number. The type is that of the song at that place, so it tells nothing more;
// but a station is at no place of the library.
uint64_t KeyOf(int32_t type, int32_t playlist, int32_t song) {
    return uint64_t{static_cast<uint32_t>(playlist)} << 34 | uint64_t{static_cast<uint32_t>(song)} << 2 |
           (static_cast<uint32_t>(type) & 3U);
}

uint64_t KeyOf(const HistoryRecord& record) {
    return KeyOf(record.type, record.playlist, record.song);
}

// The number of the pick that stands at that index.
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
    if (path == object.end() || !path->is_string() || type > kLastType) return std::nullopt;
    HistoryRecord record;
    record.type = static_cast<int32_t>(type);
    record.path = path->get<std::string>();
    record.startedAt = CountIn(object, "startedAt");
    record.playedSec = SecondsIn(object, "playedSec");
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

void ForgetLastPick(SongHistory& history) {
    if (history.records.empty()) return;
    const uint64_t key = KeyOf(history.records.back());
    history.records.pop_back();
    --history.picks;
    history.cursor = history.records.empty() ? 0 : history.records.size() - 1;
    const auto earlier = std::find_if(history.records.rbegin(), history.records.rend(),
                                      [key](const HistoryRecord& record) { return KeyOf(record) == key; });
    if (earlier == history.records.rend()) {
        history.lastPick.erase(key);
    } else {
        history.lastPick[key] = history.picks - static_cast<uint64_t>(earlier - history.records.rbegin());
    }
}

bool WasPickedLately(const SongHistory& history, int32_t type, int32_t playlist, int32_t song, int32_t depth) {
    if (depth < 0) return false;
    const auto last = history.lastPick.find(KeyOf(type, playlist, song));
    return last != history.lastPick.end() && history.picks - last->second < static_cast<uint64_t>(depth);
}

void FindHistoryInLibrary(SongHistory& history, const MusicLibrary& library) {
    std::unordered_map<std::string_view, SongPosition> places;
    for (const HistoryRecord& record : history.records) {
        if (record.type != kLastType) places[record.path] = {-1, -1};
    }
    for (size_t i = 0; i < library.playlists.size() && !places.empty(); ++i) {
        const std::vector<Song>& songs = library.playlists[i].songs;
        for (size_t j = 0; j < songs.size(); ++j) {
            const auto found = places.find(songs[j].songPath);
            if (found != places.end()) found->second = {static_cast<int32_t>(i), static_cast<int32_t>(j)};
        }
    }
    for (HistoryRecord& record : history.records) {
        if (record.type == kLastType) continue;
        const SongPosition& place = places.at(record.path);
        record.playlist = place.playlist;
        record.song = place.song;
    }
    NumberPicks(history);
}

bool ReadSongHistory(std::string_view text, SongHistory& history, std::string& error) {
    const Json object = ParseObject(text, error);
    if (object.is_null()) return false;
    const auto songs = object.find("songs");
    if (songs == object.end() || !songs->is_array()) {
        error = "it holds no list of songs";
        return false;
    }
    SongHistory read;
    for (const Json& song : *songs) {
        std::optional<HistoryRecord> record = RecordFrom(song);
        if (record) read.records.push_back(std::move(*record));
        if (read.records.size() > kMostHistory) read.records.pop_front();
    }
    read.picks = read.records.size();
    read.cursor = read.records.size();
    history = std::move(read);
    return true;
}

std::string SongHistoryText(const SongHistory& history) {
    std::string text = "{\"songs\":[";
    for (size_t i = 0; i < history.records.size(); ++i) {
        const HistoryRecord& record = history.records[i];
        const nlohmann::ordered_json object = {{"path", record.path},
                                               {"type", record.type},
                                               {"startedAt", record.startedAt},
                                               {"playedSec", record.playedSec}};
        text += i == 0 ? "\n" : ",\n";
        text += object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    }
    return text + "\n]}\n";
}

bool LoadSongHistory(const std::string& path, SongHistory& history) {
    return LoadStateFile(
        path, [&](std::string_view text, std::string& error) { return ReadSongHistory(text, history, error); });
}

bool SaveSongHistory(const std::string& path, const SongHistory& history) {
    return SaveStateFile(path, SongHistoryText(history));
}

}  // namespace hullrider
