// A song's title: from its tags, or from its file name when they are missing or meaningless.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hullrider {

struct SongTitle {
    std::string title;   // UTF-8, without line breaks and control characters; empty only when the path has no file name
    std::string artist;  // likewise; empty when unknown
};

// Of an open stream or module. Does not read the file: the tags were read when it was opened. Any thread.
SongTitle ReadSongTitle(uint32_t handle, const std::string& path);

// The rule behind it; pure. A meaningless title is replaced by the file name, without an artist, because file names
// often include it.
SongTitle ChooseSongTitle(std::string_view title, std::string_view artist, const std::string& path);

// Whether the name of a MIDI track may be the song's, rather than an instrument's or a placeholder.
bool MayBeSongName(std::string_view trackName);

// "Artist - Title", or the title alone.
std::string TitleLine(const SongTitle& song);

}  // namespace hullrider
