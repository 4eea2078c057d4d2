// Whole numbers as users type them. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

// The number that the text is, blanks around it aside. Nothing when it is none from `lowest` to `highest`: `remark`
// then says what is wanted, for display beside the field.
std::optional<int32_t> ReadNumber(std::string_view text, int32_t lowest, int32_t highest, std::string& remark);

}  // namespace hullrider
