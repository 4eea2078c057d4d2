// The song history, "Song History.json": what was played, oldest first. No Song Repeat and Previous Song use it. Holds
// the latest kMostHistory items. UI thread.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "platform/state_files.h"
#include "state/music_library.h"
#include "state/song_history.h"

namespace hullrider {

inline constexpr size_t kMostHistory = 10'000;

// Appends an item that was started and makes it the current one.
void ReportPick(SongHistory& history, HistoryRecord record);

// True when the item is among the last `depth` ones, or anywhere when `depth` exceeds their number. Never for a depth
// below 0.
bool WasPickedLately(const SongHistory& history, const HistoryKey& key, int32_t depth);

// The number of the item's last pick, counted from 1 over all picks; 0 when it is not in the history.
uint64_t LastPickOf(const SongHistory& history, const HistoryKey& key);

// Finds the items' places in a changed library by their paths. An item that is not in it stays in the history, but has
// no place and cannot count as a repeat.
void FindHistoryInLibrary(SongHistory& history, const MusicLibrary& library);

// The file: a JSON object with the list "songs", each an object with "path", "type" (0 MIDI, 1 audio file, 2 tracker
// module, 3 internet station, 4 chapter), "startedAt" (seconds since 1970), "playedSec" and optionally "title". Invalid
// items are skipped. A file that is not fully a history is kept as "PATH.bad". False when there is nothing to take.
bool LoadSongHistory(const std::string& path, SongHistory& history);
bool SaveSongHistory(const std::string& path, const SongHistory& history);

// The same on the file's text. Pure. Items before an error are good.
StateReading ReadSongHistory(std::string_view text, SongHistory& history, std::string& error);
std::string SongHistoryText(const std::deque<HistoryRecord>& records);

// Differs after every change that the player makes to a history: an item is added, removed, begins or ends.
struct HistoryMark {
    uint64_t picks = 0;
    size_t size = 0, cursor = 0;
    int64_t startedAt = 0;  // of the current item
    double playedSec = 0.0;

    bool operator==(const HistoryMark&) const = default;
};
HistoryMark MarkOf(const SongHistory& history);

}  // namespace hullrider
