// What a second start of the program tells the first one: the files that it was started with. Pure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hullrider {

// Each path, UTF-8, ended by a zero byte.
std::string HandoverText(const std::vector<std::string>& paths);

// The paths in it. Empty when it is not such a text: any program may send one.
std::vector<std::string> PathsOfHandover(std::string_view text);

}  // namespace hullrider
