// Where the state files lie.
#pragma once

#include <string>

#include "app/options.h"

namespace hullrider {

// --data-dir, else the working directory when the player is portable (built so, or with a file portable.txt beside the
// program), else "Hullrider Radio v1.1" under the user's Documents. UTF-8, absolute, without trailing separator.
std::string ChooseDataDirectory(const RunOptions& options);

// Creates the folder when it is missing, one level. Throws std::filesystem::filesystem_error ("create_directory") when
// that is not possible: without its folder the player cannot keep what the user sets, so it does not start.
void CreateDataDirectory(const std::string& folder);

}  // namespace hullrider
