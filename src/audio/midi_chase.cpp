#include "audio/midi_chase.h"

#include <array>
#include <cstdint>

#include "audio/midi_file.h"
#include "audio/synth.h"

namespace hullrider {

namespace {

constexpr uint8_t kUnset = 0xFF;

// Controllers whose order matters: data entry, and the parameter that it sets.
bool IsParameterController(uint8_t number) {
    return number == 6 || number == 38 || (number >= 96 && number <= 101);
}

// The index of the last reset among the first `count` events, or 0.
size_t LastReset(const MidiSong& song, size_t count) {
    while (count > 0 && !IsSystemReset(song, song.events[count - 1])) count--;
    return count == 0 ? 0 : count - 1;
}

struct ChannelState {
    std::array<uint8_t, 128> controllers;
    uint8_t program = kUnset, programBankMsb = kUnset, programBankLsb = kUnset;
    uint8_t pressure = kUnset, bendLow = kUnset, bendHigh = kUnset;

    ChannelState() { controllers.fill(kUnset); }

    void Note(const MidiEvent& event) {
        switch (event.status & 0xF0) {
            case 0xB0:
                NoteController(event.data[0], event.data[1]);
                break;
            case 0xC0:
                program = event.data[0];
                programBankMsb = controllers[0];
                programBankLsb = controllers[32];
                break;
            case 0xD0:
                pressure = event.data[0];
                break;
            case 0xE0:
                bendLow = event.data[0];
                bendHigh = event.data[1];
                break;
            default:
                break;
        }
    }

    void NoteController(uint8_t number, uint8_t value) {
        if (number < 120) {
            controllers[number] = value;
        } else if (number == 121) {
            ResetControllers();
        }
    }

    // What "reset all controllers" resets by MIDI recommended practice RP-015; volume, pan and banks stay.
    void ResetControllers() {
        for (const size_t number : {1, 11, 64, 65, 66, 67}) controllers[number] = kUnset;
        pressure = bendLow = bendHigh = kUnset;
    }

    void Send(uint8_t channel, Synth& synth) const {
        const auto control = [&](uint8_t number, uint8_t value) {
            if (value != kUnset) synth.Send(static_cast<uint8_t>(0xB0 | channel), number, value);
        };
        // The program was chosen with the bank of that time; a later bank waits for the next program.
        control(0, programBankMsb);
        control(32, programBankLsb);
        if (program != kUnset) synth.Send(static_cast<uint8_t>(0xC0 | channel), program, 0);
        for (uint8_t number = 0; number < 120; number++) {
            if (!IsParameterController(number)) control(number, controllers[number]);
        }
        if (pressure != kUnset) synth.Send(static_cast<uint8_t>(0xD0 | channel), pressure, 0);
        if (bendHigh != kUnset) synth.Send(static_cast<uint8_t>(0xE0 | channel), bendLow, bendHigh);
    }
};

}  // namespace

void ChaseMidi(const MidiSong& song, size_t count, Synth& synth) {
    std::array<ChannelState, 16> channels;
    for (size_t i = LastReset(song, count); i < count; i++) {
        const MidiEvent& event = song.events[i];
        const uint8_t kind = event.status & 0xF0;
        if (event.status == 0xF0) {
            // It may select a drum channel or be the reset itself, so it is sent in its place.
            synth.SendSysex(song.sysex[event.sysex].data(), song.sysex[event.sysex].size());
        } else if (kind == 0xB0 && IsParameterController(event.data[0])) {
            synth.Send(event.status, event.data[0], event.data[1]);
        } else {
            channels[event.status & 0x0F].Note(event);
        }
    }
    for (uint8_t channel = 0; channel < channels.size(); channel++) channels[channel].Send(channel, synth);
}

void StrikeHeldNotes(const MidiSong& song, size_t count, Synth& synth) {
    constexpr uint8_t kDrums = 9;  // channel; drums are struck, not held
    std::array<std::array<uint8_t, 128>, 16> velocities{};
    for (size_t i = LastReset(song, count); i < count; i++) {
        const MidiEvent& event = song.events[i];
        const uint8_t kind = event.status & 0xF0, channel = event.status & 0x0F;
        if (kind == 0x90) velocities[channel][event.data[0]] = event.data[1];
        if (kind == 0x80) velocities[channel][event.data[0]] = 0;
        if (kind == 0xB0 && event.data[0] >= 120 && event.data[0] != 121) velocities[channel].fill(0);
    }
    for (uint8_t channel = 0; channel < velocities.size(); channel++) {
        if (channel == kDrums) continue;
        for (uint8_t key = 0; key < 128; key++) {
            const uint8_t velocity = velocities[channel][key];
            if (velocity > 0) synth.Send(static_cast<uint8_t>(0x90 | channel), key, velocity);
        }
    }
}

}  // namespace hullrider
