// The tags of a file in the shapes that BASS_ChannelGetTags hands out. Made once, when the file is opened.
#pragma once

#include <cstdint>
#include <string>

struct AVFormatContext;

namespace hullrider {

// One block of tags: `kind` is a BASS_TAG value, 0 among them; `text` holds the bytes, whatever the kind's shape is.
// Empty text: the file has no tags.
struct TagBlock {
    uint32_t kind = 0;
    std::string text;
};

// MP3: the 128 bytes of an ID3v1 tag (id3.org, "ID3v1"), in ISO 8859-1, filled from whatever tag the file has.
// FLAC, Ogg, Opus and MP4: "name=value" in UTF-8, each ended by a zero, and one more zero. Names as Vorbis comments
// have them.
TagBlock TagsOf(const AVFormatContext& format);

}  // namespace hullrider
