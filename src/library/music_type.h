// Which files are songs, and of which type. Pure.
#pragma once

#include <string>
#include <string_view>

#include "state/music_library.h"

namespace hullrider {

// The type for an extension, in lower case and with its dot; kUnsupported for any other.
MusicType GetMusicType(std::string_view extension);

// The type for a path or file name; the extension's case does not matter. A name whose only dot is its first character
// has no extension.
MusicType MusicTypeOf(std::string_view path);

// A copy with every ASCII letter in lower case.
std::string ToLower(std::string_view text);

}  // namespace hullrider
