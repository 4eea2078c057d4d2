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
    int32_t lastCandidateCount = 0;  // how often songs can be drawn from the list, as far as 32 bits go
};

// The category at `percent`, 0 to 99, of the cumulative shares of MIDI, MP3, favorites and radio in this order;
// tracker modules are the remainder. So shares are whole per cent.
Category CategoryAt(const SelectionWeights& weights, int32_t percent);

// The weights in the form that is drawn from: kinds that cannot play, and favorites without any candidate, are 0;
// without any weight the built-in mix of what there is; without music folders MIDI and radio only. `excludeRadioOnce`
// forbids the radio.
SelectionWeights PreparedWeights(const SelectionWeights& weights, const SelectionState& selection,
                                 const CategoryCounts& counts);

struct CategoryDraw {
    Category category = kNoCategory;  // that: the weights sum up to less than nothing, nothing is to be played
    SelectionWeights weights;         // as drawn from, but with the radio's weight back when it was excluded once
    int32_t savedRadioWeight = 0;     // what that goes back to
};

CategoryDraw PickCategory(const SelectionWeights& weights, const SelectionState& selection,
                          const CategoryCounts& counts, Random& random);

}  // namespace hullrider
