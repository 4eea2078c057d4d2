// Where the state files are kept.
#pragma once

#include <string>

#include "app/options.h"

namespace hullrider {

// --data-dir, else the working directory when the player is portable (built so, or with a file portable.txt beside the
// program), else "Hullrider Radio v1.1" under the user's Documents. UTF-8, absolute, without trailing separator.
std::string ChooseDataDirectory(const RunOptions& options);

// Creates the folder if it is missing, but not its parents. Throws std::filesystem::filesystem_error
// ("create_directory") on failure: without its folder the player cannot save anything, so it does not start.
void CreateDataDirectory(const std::string& folder);

}  // namespace hullrider
