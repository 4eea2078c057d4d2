// The tags of a file in the shapes that BASS_ChannelGetTags hands out. Made once, when the file is opened.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct AVFormatContext;

namespace hullrider {

// One block of tags: `kind` is a BASS_TAG value, 0 among them; `text` holds the bytes, whatever the kind's shape is.
struct TagBlock {
    uint32_t kind = 0;
    std::string text;
};
using TagBlocks = std::vector<TagBlock>;  // empty blocks among them count as absent

// MP3: the 128 bytes of an ID3v1 tag (id3.org, "ID3v1"), in ISO 8859-1, filled from whatever tag the file has.
// All: "name=value" in UTF-8, each ended by a zero, and one more zero. Names as Vorbis comments have them. Values of
// another encoding are converted, those that are no text in any are left out.
TagBlocks TagsOf(const AVFormatContext& format);

// A module's title in UTF-8: what the library made of it (`title`), or, where the bytes in the file are Shift-JIS,
// which no tracker knew of, what they say.
std::string ModuleTitle(std::string_view file, std::string_view title);

}  // namespace hullrider
