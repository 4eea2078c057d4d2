// How long the sound of an MP4 file is, which its header alone does not tell. Used by the thread that has the reader.
#pragma once

#include <cstdint>

struct AVFormatContext;
struct AVStream;

namespace hullrider {

// In the stream's time base from `origin` on, where `told` is what the header says:
// - less what an encoder added behind the sound, by the tag "iTunSMPB", with which older stores say what others say
//   with an edit list: in hexadecimal a zero, the samples added before and after, and those between;
// - less what a file that broke off does not hold.
int64_t Mp4Duration(AVFormatContext& format, AVStream& stream, int64_t told, int64_t origin);

}  // namespace hullrider
