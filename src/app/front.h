// What both fronts share: options, exit status, reporting a failure.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/options.h"

namespace hullrider {

// Reads the arguments (UTF-8, without the program's name), answers --help, --version and --simulate itself, and
// otherwise calls `run`. Returns the exit status: that of `run`, 2 for a bad option, or 1 when `run` threw; `tell` then
// receives the reason.
int RunFront(const std::vector<std::string>& arguments, const std::function<int(const RunOptions&)>& run,
             const std::function<void(const std::string&)>& tell);

}  // namespace hullrider
