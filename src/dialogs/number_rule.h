// Whole numbers as users type them. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

// The number in the text, ignoring blanks around it. Empty when it is not a number from `lowest` to `highest`: `remark`
// then gives the bounds, for display beside the field.
std::optional<int32_t> ReadNumber(std::string_view text, int32_t lowest, int32_t highest, std::string& remark);

}  // namespace hullrider
