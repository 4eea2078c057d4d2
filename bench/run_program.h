#pragma once

#include <string>
#include <vector>

namespace hullrider {

// Runs a program to its end with its output thrown away, or written to `output`. Ends this one when it fails.
void RunProgram(std::vector<std::string> arguments, const char* output = "/dev/null");

}  // namespace hullrider
