// How many songs of which kind the library holds. UI thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "state/music_library.h"

namespace hullrider {

// The recount: brings the library's counters up to date and sets the weight of every kind that has nothing to play to
// 0; other weights stay. Due after every change of the library or of the station list.
void UpdateSongCounts(MusicLibrary& library, SelectionWeights& weights, int32_t internetStationCount);

// Where a song stands.
struct SongPosition {
    int32_t playlist = 0;
    int32_t song = 0;  // within the playlist
};

// The song that stands there; null when none does.
const Song* FindSong(const MusicLibrary& library, SongPosition position);
Song* FindSong(MusicLibrary& library, SongPosition position);

// All songs of the library as it stands, whether scanned or loaded: the range for a draw over every song. The songs are
// numbered from 0 in library order; there is no position for a number outside the range.
int64_t SongCountOf(const MusicLibrary& library);
std::optional<SongPosition> SongAt(const MusicLibrary& library, int64_t number);

// "-1,234,567" for -1234567.
std::string FormatWithThousands(int64_t value);

// "1 song", "1,234 songs": the number with a noun whose plural ends in s.
std::string Counted(int64_t count, std::string_view noun);

}  // namespace hullrider
