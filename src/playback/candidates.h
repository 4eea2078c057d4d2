// The songs and stations that can be drawn, weighted by the user's favourites. A favourite with the count c is drawn
// c + 1 times as often as a song that is none; one with a negative count is never drawn. UI thread.
#pragma once

#include <functional>
#include <optional>

#include "playback/random.h"
#include "state/music_library.h"
#include "state/radio_state.h"
#include "state/selection_state.h"

namespace hullrider {

// The lists of the whole library, built anew when the library was recounted or the filter changed since.
const CandidateLists& BuildWeightedSongList(const MusicLibrary& library, SelectionState& selection);

// The internet stations, as SongChoice.playlist, then the playlists that stand for internet radio, as station count +
// playlist index.
WeightedSongs BuildStationList(const RadioState& radio, const MusicLibrary& library);

// A song drawn by weight; `list` is not empty.
const SongChoice& DrawSong(const WeightedSongs& list, Random& random);

// A song that passes, drawn by weight among those that do; nothing when none does. Asks for each song a few times at
// most.
std::optional<SongChoice> DrawPassing(const WeightedSongs& list, Random& random,
                                      const std::function<bool(const SongChoice&)>& passes);

bool IsEmpty(const WeightedSongs& list);
void Append(WeightedSongs& list, const SongChoice& song, int64_t weight);

// Whether the user has marked the song.
bool IsFavorite(const Song& song);

}  // namespace hullrider
