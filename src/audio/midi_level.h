// Brings MIDI songs to one loudness. Fonts differ by 10 dB and more, and so do songs: each song is brought to the level
// of typical recorded music, within limits, so as not to distort a soft piece or a font that lacks most of its
// instruments. The loudness is estimated from excerpts. One thread at a time.
#pragma once

#include <cstddef>
#include <vector>

#include "audio/loudness.h"
#include "audio/midi_player.h"

namespace hullrider {

class MidiLevel {
public:
    MidiLevel(const MidiSong& song, uint32_t rate);

    // Measures one more excerpt through a player at a gain of 1; it moves the player.
    void WeighOne(MidiPlayer& player);
    bool IsDone() const;

    // The gain factor from the excerpts so far; 1 when they were silent.
    float Gain() const;

private:
    const MidiSong& song_;
    uint32_t rate_;
    Loudness loudness_;
    std::vector<float> excerpt_;
    size_t weighed_ = 0;
    size_t events_ = 0;
};

}  // namespace hullrider
