// Numbers as users read and type them. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

// Bounds of a number that is kept in whole small units and shown in larger ones: milliseconds as seconds with
// `perUnit` 1000. With `perUnit` 1 only whole numbers are valid.
struct NumberRule {
    int32_t lowest = 0, highest = 0;
    int32_t perUnit = 1;
    int32_t step = 1;  // of the arrows
};

// "8.0", "8.25", or "8" with `perUnit` 1.
std::string NumberText(int32_t value, int32_t perUnit);

// The number in the text, ignoring blanks around it; a comma is a decimal point, too. Empty when it is not a number
// within the bounds: `remark` then gives them, for display beside the field.
std::optional<int32_t> ReadNumber(std::string_view text, const NumberRule& rule, std::string& remark);

// The number after so many steps of the arrows, within the bounds.
int32_t SteppedNumber(int32_t value, int steps, const NumberRule& rule);

}  // namespace hullrider
