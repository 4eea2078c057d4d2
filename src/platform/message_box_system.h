// The system's own box. For message_box.cpp.
#pragma once

#include <string_view>

namespace hullrider {

void ShowSystemErrorBox(std::string_view text);

}  // namespace hullrider
