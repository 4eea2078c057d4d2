// The tables of an MP4 file, looked at before FFmpeg takes them at their word and makes room for what they promise.
#pragma once

#include <string>

namespace hullrider {

// Whether the tables of the file at `path` (UTF-8) tell of far more samples than it has bytes for. False for a file of
// another kind. Boxes: ISO/IEC 14496-12.
bool HasAbsurdMp4Tables(const std::string& path);

}  // namespace hullrider
