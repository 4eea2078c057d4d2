// Brings MIDI songs to one loudness. Fonts differ by 10 dB and more, and songs do too: each song is brought to the
// level at which recorded music lies, as far as that is no caricature of a soft piece or of a font that has few of its
// instruments. How loud a song is, is told from excerpts of it. One thread at a time.
#pragma once

#include <cstddef>
#include <vector>

#include "audio/loudness.h"
#include "audio/midi_player.h"

namespace hullrider {

class MidiLevel {
public:
    MidiLevel(const MidiSong& song, uint32_t rate);

    // Weighs one more excerpt through a player, which is anywhere then, with a gain of 1.
    void WeighOne(MidiPlayer& player);
    bool IsDone() const;

    // The factor that what was weighed so far needs; 1 when there was nothing to hear.
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
