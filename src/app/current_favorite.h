// The favorite count of the current item. UI thread.
#pragma once

#include <cstdint>
#include <optional>

#include "state/app_state.h"

namespace hullrider {

// Of the internet station or song that plays; empty when nothing plays.
std::optional<int32_t> CurrentFavoriteCount(const AppState& app);

// Clamps the count to 32 bits. A song with 0 or less is no longer a favorite; a station below 0 is never drawn.
void SetCurrentFavoriteCount(AppState& app, int64_t count);

}  // namespace hullrider
