// Reads Standard MIDI Files ("Standard MIDI Files 1.0", MIDI Manufacturers Association, 1996): formats 0, 1 and 2,
// alone or inside a RIFF container (RMID). Pure; the bytes may come from anyone.
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
static_assert(sizeof(MidiEvent) == 16);  // there may be a million

struct MidiSong {
    std::vector<MidiEvent> events;            // in order of time; events of one moment in the order of the file
    std::vector<std::vector<uint8_t>> sysex;  // without the 0xF0 and 0xF7
    // What the first track says that it is called, as UTF-8. Empty when it says nothing, or when it holds notes and is
    // not alone: then it names its own part.
    std::string name;
    // The time of the last event, the end of the longest track included; but of a silence after the last note no more
    // than ten seconds, because files wait for an hour there.
    double seconds = 0.0;
};

// GM System On or Off, GS Reset, XG System On: what came before them is void.
bool IsSystemReset(const MidiSong& song, const MidiEvent& event);

// Nothing when the bytes are no MIDI file, or hold more events than any song. System exclusive messages
// beyond those of any song are left out. A file that breaks off, or a track that is damaged, plays up to there. Takes
// 32 MB at most.
std::optional<MidiSong> ReadMidiFile(std::string_view file);

}  // namespace hullrider
