// A file's tags in the formats of BASS_ChannelGetTags. Made once, when the file is opened.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct AVFormatContext;

namespace hullrider {

// One block of tags: `kind` is a BASS_TAG value, which may be 0; `text` holds the bytes in that format.
struct TagBlock {
    uint32_t kind = 0;
    std::string text;
};
using TagBlocks = std::vector<TagBlock>;  // an empty block counts as absent

// MP3: the 128 bytes of an ID3v1 tag (id3.org, "ID3v1"), in ISO 8859-1, made from whatever tag the file has. All:
// "name=value" in UTF-8, each zero-terminated, and a final zero, with the names of Vorbis comments. Values in other
// encodings are converted; those that are not text are dropped.
TagBlocks TagsOf(const AVFormatContext& format);

// A module's title in UTF-8: the library's decoding (`title`), or the file's bytes when they are Shift-JIS, which no
// tracker knew of.
std::string ModuleTitle(std::string_view file, std::string_view title);

}  // namespace hullrider
