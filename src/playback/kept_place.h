// Keeps the playback's place in the library over a change of the library. UI thread.
#pragma once

#include <string>

#include "state/app_state.h"

namespace hullrider {

// The current playlist, and the place in it of songs played in order. Paths have their ASCII letters in lower case,
// because a folder may be added again in another case.
struct KeptPlace {
    std::string albumFolder;  // empty: nowhere
    std::string songPath;     // empty: before the first song
};

// Call before the change.
KeptPlace KeepPlace(const AppState& app);

// Call after the change and the recount. The current song is found by its record in the history, so that it is found
// even if a later change brings it back. What has left the library has no place.
void FindPlaceAgain(AppState& app, const KeptPlace& place);

}  // namespace hullrider
