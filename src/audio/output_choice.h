// The output that the --output option chooses. Set before BASS_Init.
#pragma once

#include <string>

namespace hullrider {

enum class OutputKind {
    kDefault,  // the system's default device
    kNull,     // keeps time, makes no sound
    kWav,      // records exactly what would be heard to a WAV file, in real time
};

struct OutputChoice {
    OutputKind kind = OutputKind::kDefault;
    std::string wavPath;  // UTF-8, for kWav
};

// Replaces the default device (-1) of the next BASS_Init. UI thread.
void ChooseOutput(const OutputChoice& choice);

// The output in use, for display: a device's name or the file, and the sample rate. Empty before BASS_Init.
std::string OutputDescription();

}  // namespace hullrider
