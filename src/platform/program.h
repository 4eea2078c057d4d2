// Starting other programs. UI thread.
#pragma once

#include <functional>
#include <string>

namespace hullrider {

// Starts a program in a folder with administrator rights, for which the system asks the user, and does not wait for it.
// False when that failed; `error` receives the system's text. `onEnd` runs when the program has ended, on systems that
// report it.
bool StartElevated(const std::string& program, const std::string& folder, std::string& error,
                   std::function<void()> onEnd);

// Shows the folder in the system's own file browser. False when that failed.
bool ShowFolder(const std::string& folder);

}  // namespace hullrider
