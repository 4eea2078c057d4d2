// The length of the sound in an MP4 file, which its header alone does not give. Used by the reader's thread.
#pragma once

#include <cstdint>

struct AVFormatContext;
struct AVStream;

namespace hullrider {

// In the stream's time base from `origin` on: the header's value `told`,
// - less the encoder's padding after the sound, by the tag "iTunSMPB", which older stores write instead of an edit
// list:
//   a zero, the samples added before and after, and those between, all in hexadecimal;
// - less what a truncated file lacks.
int64_t Mp4Duration(AVFormatContext& format, AVStream& stream, int64_t told, int64_t origin);

}  // namespace hullrider
