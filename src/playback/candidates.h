// The songs and stations that can be drawn, weighted by the user's favorites. A favorite of count c is drawn c + 1
// times as often as another song, one of negative count never. UI thread.
#pragma once

#include <functional>
#include <optional>

#include "playback/picker_state.h"
#include "state/music_library.h"
#include "state/radio_state.h"

namespace hullrider {

// The lists of the whole library but the queue, in `picker.candidates`. Rebuilt after a recount, a change of the
// filter, or when a folder goes away or may be back.
const CandidateLists& BuildWeightedSongList(const MusicLibrary& library, int32_t filter, PickerState& picker);

// Every song that passes the filter, each once, without the queue and those that are never drawn or away. Kept with the
// lists of the last BuildWeightedSongList, which must have been called for this library.
const WeightedSongs& EverySong(const MusicLibrary& library, int32_t filter, PickerState& picker);
// Every song of one playlist, each once.
WeightedSongs EverySongOf(const MusicLibrary& library, int32_t playlist);

// The internet stations by index, then the playlists that stand for internet radio, as station count + playlist index;
// both in SongChoice.playlist.
WeightedSongs BuildStationList(const RadioState& radio, const MusicLibrary& library);

using SongTest = std::function<bool(const SongChoice&)>;

// A song drawn by weight. `list` must not be empty.
const SongChoice& DrawSong(const WeightedSongs& list, Random& random);

// A song drawn by weight among those that pass; nothing when none does.
std::optional<SongChoice> DrawPassing(const WeightedSongs& list, Random& random, const SongTest& passes);

// The song of the lowest rank among those that pass; nothing when none does.
std::optional<SongChoice> LowestPassing(const WeightedSongs& list, const SongTest& passes,
                                        const std::function<uint64_t(const SongChoice&)>& rank);

bool IsEmpty(const WeightedSongs& list);
void Append(WeightedSongs& list, const SongChoice& song, int64_t weight);

// Whether the song is marked, and whether it passes the filter.
bool IsFavorite(const Song& song);
bool PassesFilter(const Song& song, int32_t filter);

}  // namespace hullrider
