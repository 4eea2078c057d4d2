// Starting other programs. UI thread.
#pragma once

#include <functional>
#include <string>

namespace hullrider {

// Starts a program in a folder with the rights of an administrator, for which the system asks the user, and lets it go
// its own way. False when that failed; `error` receives the system's text. `onEnd` is run when the program has ended,
// where the system tells.
bool StartElevated(const std::string& program, const std::string& folder, std::string& error,
                   std::function<void()> onEnd);

// Shows the folder in the system's own file browser. False when that failed.
bool ShowFolder(const std::string& folder);

}  // namespace hullrider
