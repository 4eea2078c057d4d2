// Reads Standard MIDI Files ("Standard MIDI Files 1.0", MIDI Manufacturers Association, 1996): formats 0, 1 and 2,
// alone or in a RIFF container (RMID). Pure; the input is untrusted.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace hullrider {

struct MidiEvent {
    double seconds = 0.0;  // from the start, by the tempo map
    uint32_t sysex = 0;    // for 0xF0: which of MidiSong::sysex
    uint8_t status = 0;    // 0x80 to 0xEF with the channel in the low half, or 0xF0: a system exclusive message
    uint8_t data[2] = {};  // the message's data bytes
};
static_assert(sizeof(MidiEvent) == 16);  // a song may have a million

struct MidiSong {
    std::vector<MidiEvent> events;            // sorted by time; simultaneous ones in file order
    std::vector<std::vector<uint8_t>> sysex;  // without the 0xF0 and 0xF7
    // The first track's name, as UTF-8. Empty when there is none, or when the track holds notes and is not the only
    // one: then it names its own part.
    std::string name;
    // The time of the last event or the end of the longest track, but at most ten seconds after the last note, because
    // some files end with an hour of silence.
    double seconds = 0.0;
};

// GM System On or Off, GS Reset, XG System On: they cancel everything before them.
bool IsSystemReset(const MidiSong& song, const MidiEvent& event);

// Nothing when the bytes are not a MIDI file, or hold more events than any real song. Excess system exclusive messages
// are dropped. A truncated file or damaged track plays up to the damage. Takes at most 32 MB.
std::optional<MidiSong> ReadMidiFile(std::string_view file);

}  // namespace hullrider
