// Draws the category of the next item. Pure: reads and writes only what it is given.
#pragma once

#include "playback/random.h"
#include "state/music_library.h"
#include "state/selection_state.h"

namespace hullrider {

// How much there is to play.
struct CategoryCounts {
    int32_t midi = 0;
    int32_t mp3 = 0;
    int32_t tracker = 0;
    int32_t stations = 0;
    int32_t lastCandidateCount = 0;  // total weight of the songs, limited to 32 bits
};

// The category at `percent`, 0 to 99, of the cumulative shares of MIDI, MP3, favorites and radio in this order; tracker
// modules are the remainder. Shares are thus whole percents.
Category CategoryAt(const SelectionWeights& weights, int32_t percent);

// The weights as drawn from. Categories with nothing to play are 0, and so are favorites when there is no song. Without
// any weight, the built-in mix of what there is; without music folders, only MIDI and radio. `excludeRadioOnce`
// excludes the radio.
SelectionWeights PreparedWeights(const SelectionWeights& weights, const SelectionState& selection,
                                 const CategoryCounts& counts);

struct CategoryDraw {
    Category category = kNoCategory;  // kNoCategory: the weights forbid everything
    SelectionWeights weights;         // as drawn from, with the radio's weight restored
    int32_t savedRadioWeight = 0;     // the radio's weight to restore
};

CategoryDraw PickCategory(const SelectionWeights& weights, const SelectionState& selection,
                          const CategoryCounts& counts, Random& random);

}  // namespace hullrider
