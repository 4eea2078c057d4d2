#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "audio/midi_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto song = hullrider::ReadMidiFile({reinterpret_cast<const char*>(data), size});
    if (!song) return 0;
    double last = 0.0;
    for (const hullrider::MidiEvent& event : song->events) {
        if (!(event.seconds >= last) || event.seconds > 86400.0) std::abort();
        if (event.status == 0xF0 && event.sysex >= song->sysex.size()) std::abort();
        last = event.seconds;
    }
    return 0;
}
