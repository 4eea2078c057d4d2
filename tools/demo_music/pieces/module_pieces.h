// The album "Pixel Weather", for trackers.
#pragma once

#include "demo_music/tracker/module.h"

namespace hullrider::demo {

TrackerPiece ComposeCloudJumper();        // a cheerful chip tune in C (S3M)
TrackerPiece ComposeBackstreetShuffle();  // a swung groove in D dorian (MOD)
TrackerPiece ComposeSlowAurora();         // pads and bells in E (XM)

}  // namespace hullrider::demo
