// The song history, "Song History.json": what was played, oldest first. No Song Repeat and the way back to earlier
// songs go by it. Holds the latest kMostHistory items. UI thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "state/music_library.h"
#include "state/song_history.h"

namespace hullrider {

inline constexpr size_t kMostHistory = 10'000;

// Appends an item that was picked and makes it the one that plays.
void ReportPick(SongHistory& history, HistoryRecord record);

// Takes the last item back: it could not be played.
void ForgetLastPick(SongHistory& history);

// True when the song stands among the last `depth` items, or anywhere for a depth beyond their number. Never for a
// depth below 0.
bool WasPickedLately(const SongHistory& history, int32_t type, int32_t playlist, int32_t song, int32_t depth);

// Finds the items' places in a library that has changed, by their paths. What is not in it has none and is no song
// that could repeat, but stays in the history.
void FindHistoryInLibrary(SongHistory& history, const MusicLibrary& library);

// The file: a JSON object with the list "songs", each an object with "path", "type" (0 MIDI, 1 audio file, 2 tracker
// module, 3 internet station), "startedAt" (seconds since 1970) and "playedSec". Of items that are none the good ones
// are taken. A file that is no history is kept as "PATH.bad". False when there is nothing to take.
bool LoadSongHistory(const std::string& path, SongHistory& history);
bool SaveSongHistory(const std::string& path, const SongHistory& history);

// The same on the file's text. Pure. False when it is no history at all.
bool ReadSongHistory(std::string_view text, SongHistory& history, std::string& error);
std::string SongHistoryText(const SongHistory& history);

}  // namespace hullrider
