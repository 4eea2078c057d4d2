// Which kind of music comes next. Pure: reads and writes only what it is given.
#pragma once

#include "playback/random.h"
#include "state/music_library.h"
#include "state/selection_state.h"

namespace hullrider {

// How many things of each kind there are to play.
struct CategoryCounts {
    int32_t midi = 0;
    int32_t mp3 = 0;
    int32_t tracker = 0;
    int32_t stations = 0;
};

// The category at `percent`, 0 to 99, of the cumulative shares of MIDI, MP3, favourites and radio in this order;
// tracker modules are the remainder. So shares are whole per cent.
Category CategoryAt(const SelectionWeights& weights, int32_t percent);

// Brings the weights into the form that is drawn from: kinds that cannot play, and favourites before the first
// candidate list, are 0; without any weight the built-in mix of what there is; without music folders MIDI and radio
// only. `excludeRadioOnce` forbids the radio.
void PrepareWeights(SelectionWeights& weights, const SelectionState& selection, const CategoryCounts& counts);

// Draws a category. kNoCategory when the weights sum up to less than nothing: nothing is to be played. Takes back
// `excludeRadioOnce` and the radio's weight.
Category PickCategory(SelectionWeights& weights, SelectionState& selection, const CategoryCounts& counts,
                      Random& random);

}  // namespace hullrider
