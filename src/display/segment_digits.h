// Digits of seven slanted segments, as on the clock of a tuner. Pure.
#pragma once

#include <string_view>

#include "display/coverage.h"

namespace hullrider {

inline constexpr float kSegmentDigitHeight = 20.0F;  // design units

// How wide a text of digits and colons is, in design units.
float SegmentTextWidth(std::string_view text);

// Adds the text with its left end at `x` and its top at `y`, design units; other characters are left dark.
void AddSegmentText(Coverage& coverage, float scale, std::string_view text, float x, float y);

}  // namespace hullrider
