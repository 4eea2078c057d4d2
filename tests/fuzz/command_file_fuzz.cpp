// A line of the command file: whatever it says, its numbers are such that can be used.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "playback/command_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string line(data, data + size);
    const auto parsed = hullrider::ParseCommandLine(line);
    if (!parsed) return 0;
    if (!std::isfinite(parsed->number)) std::abort();
    if (parsed->word < hullrider::CommandWord::kNextSong) std::abort();
    if (parsed->word > hullrider::CommandWord::kNextSoundFont) std::abort();
    return 0;
}
