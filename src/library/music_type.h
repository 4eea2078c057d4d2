// Which files are songs, and of which kind. Pure.
#pragma once

#include <string>
#include <string_view>

#include "state/music_library.h"

namespace hullrider {

// The kind of a file from its extension, lower-case and with its dot; kUnsupported for anything else.
MusicType GetMusicType(std::string_view extension);

// The kind of the file at a path or of that name; the extension's case does not matter. A name that only begins with a
// dot has no extension.
MusicType MusicTypeOf(std::string_view path);

// A copy with every ASCII letter in lower case.
std::string ToLower(std::string_view text);

}  // namespace hullrider
