// What a song is called: by its tags, or by its file name where they say nothing sensible.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hullrider {

struct SongTitle {
    std::string title;   // UTF-8, without line breaks and control characters; empty only for a path without a name
    std::string artist;  // likewise; empty when unknown
};

// Of an open stream or module. Reads nothing from the file: its tags came with opening it. Any thread.
SongTitle ReadSongTitle(uint32_t handle, const std::string& path);

// The choice behind it, pure. A title that came without a sense gives way to the file name, which often names the
// artist too: then there is no artist beside it.
SongTitle ChooseSongTitle(std::string_view title, std::string_view artist, const std::string& path);

// Whether the name of a MIDI song's track may be that of the song, not of an instrument or of nothing.
bool MayBeSongName(std::string_view trackName);

// "Artist - Title", or the title alone.
std::string TitleLine(const SongTitle& song);

}  // namespace hullrider
