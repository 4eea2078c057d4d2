// The album "Tide and Timber", for the program's own instruments.
#pragma once

#include "demo_music/synth/recording.h"

namespace hullrider::demo {

Recording ComposeMorningFerry();  // plucked strings over a soft beat, in G
Recording ComposeGlassGarden();   // a music-box waltz of bells and pads, in D
Recording ComposeCafeLanterns();  // a late, swung electric piano, in G minor

}  // namespace hullrider::demo
