// Checks the tables of an MP4 file before FFmpeg allocates what they promise.
#pragma once

#include <string>

namespace hullrider {

// Whether the tables of the file at `path` (UTF-8) promise far more samples than the file has bytes for. False for a
// file of another type. Boxes: ISO/IEC 14496-12.
bool HasAbsurdMp4Tables(const std::string& path);

}  // namespace hullrider
