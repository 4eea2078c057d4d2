// Where playback stands in the library, kept over a change of the library. UI thread.
#pragma once

#include <string>

#include "state/app_state.h"

namespace hullrider {

// The current playlist, and where the walk without shuffle stands in it. Paths with their ASCII letters in lower case:
// a folder that is added again may be spelled in another case.
struct KeptPlace {
    std::string albumFolder;  // empty: nowhere
    std::string songPath;     // empty: before the first song
};

// Before the change.
KeptPlace KeepPlace(const AppState& app);

// After the change and the recount. The song that plays is found by its record in the history, so that it is found
// again too when it comes back with a later change. What is not there any more has no place.
void FindPlaceAgain(AppState& app, const KeptPlace& place);

}  // namespace hullrider
