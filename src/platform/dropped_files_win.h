// Files that the user drops on a window. UI thread.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

namespace hullrider {

// The paths of a WM_DROPFILES, as UTF-8. Finishes the drop.
std::vector<std::string> TakeDroppedPaths(HDROP drop);

}  // namespace hullrider
