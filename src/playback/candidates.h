// The songs and stations that can be drawn, weighted by the user's favorites. A favorite with the count c is drawn c +
// 1 times as often as another song; one with a negative count is never drawn. UI thread.
#pragma once

#include <functional>
#include <optional>

#include "playback/picker_state.h"
#include "state/music_library.h"
#include "state/radio_state.h"

namespace hullrider {

// The lists of the whole library, in `picker.candidates`; built anew when the library was recounted, the filter changed
// or a folder went away or may be back since.
const CandidateLists& BuildWeightedSongList(const MusicLibrary& library, int32_t filter, PickerState& picker);

// Every song that the filter passes, each once; those that are never drawn are left out.
WeightedSongs EverySong(const MusicLibrary& library, int32_t filter);
// Every song of one playlist, each once.
WeightedSongs EverySongOf(const MusicLibrary& library, int32_t playlist);

// The internet stations, as SongChoice.playlist, then the playlists that stand for internet radio, as station count +
// playlist index.
WeightedSongs BuildStationList(const RadioState& radio, const MusicLibrary& library);

using SongTest = std::function<bool(const SongChoice&)>;

// A song drawn by weight; `list` is not empty.
const SongChoice& DrawSong(const WeightedSongs& list, Random& random);

// A song that passes, drawn by weight among those that do; nothing when none does.
std::optional<SongChoice> DrawPassing(const WeightedSongs& list, Random& random, const SongTest& passes);

// The song of the lowest rank among those that pass; nothing when none does.
std::optional<SongChoice> LowestPassing(const WeightedSongs& list, const SongTest& passes,
                                        const std::function<uint64_t(const SongChoice&)>& rank);

bool IsEmpty(const WeightedSongs& list);
void Append(WeightedSongs& list, const SongChoice& song, int64_t weight);

// Whether the user has marked the song, and whether the filter lets it through.
bool IsFavorite(const Song& song);
bool PassesFilter(const Song& song, int32_t filter);

}  // namespace hullrider
