// How much what plays now is favored. UI thread.
#pragma once

#include <cstdint>
#include <optional>

#include "state/app_state.h"

namespace hullrider {

// The favorite count of the internet station that plays, or of the song; nothing when nothing plays.
std::optional<int32_t> CurrentFavoriteCount(const AppState& app);

// Sets it, cut to 32 bits. A song with 0 or less is no favorite any more; a station with less than 0 is never drawn.
void SetCurrentFavoriteCount(AppState& app, int64_t count);

}  // namespace hullrider
