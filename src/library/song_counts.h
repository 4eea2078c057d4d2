// How many songs of each type the library holds. UI thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "state/music_library.h"

namespace hullrider {

// The recount: updates the library's counters, without the queue, and sets the weight of every category that has
// nothing to play to 0; other weights stay. Due after every change of the library or of the station list.
void UpdateSongCounts(MusicLibrary& library, SelectionWeights& weights, int32_t internetStationCount);

// A song's place in the library.
struct SongPosition {
    int32_t playlist = 0;
    int32_t song = 0;  // within the playlist
};

// The song at that place; null when there is none.
const Song* FindSong(const MusicLibrary& library, SongPosition position);
Song* FindSong(MusicLibrary& library, SongPosition position);

// The number of songs in the library as it stands, whether scanned or loaded, and the place of each: they are numbered
// from 0 in library order. Nothing for a number outside the range.
int64_t SongCountOf(const MusicLibrary& library);
std::optional<SongPosition> SongAt(const MusicLibrary& library, int64_t number);

// "-1,234,567" for -1234567.
std::string FormatWithThousands(int64_t value);

// "1 song", "1,234 songs": the number with a noun whose plural ends in s.
std::string Counted(int64_t count, std::string_view noun);

}  // namespace hullrider
