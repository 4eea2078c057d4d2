// Checks a tracker module's sample tables before libopenmpt unpacks the samples.
#pragma once

#include <cstdint>
#include <string_view>

namespace hullrider {

// The most memory that the samples of an IT or S3M module can take. Samples may be packed, and many may share the same
// bytes of the file, so that a small file could fill any memory. 0 for a file of another type. Formats: "ITTECH.TXT"
// (Impulse Tracker 2.14) and "S3M.TXT" (Scream Tracker 3.20).
uint64_t ModuleSampleBytes(std::string_view file);

}  // namespace hullrider
