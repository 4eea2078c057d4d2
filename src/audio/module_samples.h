// The sample tables of a tracker module, looked at before libopenmpt unpacks what they name.
#pragma once

#include <cstdint>
#include <string_view>

namespace hullrider {

// How many bytes of memory the samples of an IT or S3M module may take at most. Samples may be packed, and many may
// name the same bytes of the file, so that a small file fills any memory. 0 for a file of another kind. Formats:
// "ITTECH.TXT" (Impulse Tracker 2.14) and "S3M.TXT" (Scream Tracker 3.20).
uint64_t ModuleSampleBytes(std::string_view file);

}  // namespace hullrider
