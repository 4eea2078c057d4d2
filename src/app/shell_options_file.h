// "ShellOptions.json": a JSON object with "x", "y", "width" and "height" (pixels), "maximized", "closeToTray" and
// "equalLoudness" (booleans). Each key may be missing or of another kind: then that value is as it was. UI thread.
#pragma once

#include <string>
#include <string_view>

#include "state/shell_state.h"

namespace hullrider {

// A file that is no such object is one line on the error stream and is kept as "PATH.bad". A missing one is no fault.
void LoadShellOptions(const std::string& path, ShellOptions& options);

// False, with a line on the error stream, when that failed; the old file stays.
bool SaveShellOptions(const std::string& path, const ShellOptions& options);

// The same on the file's text. Pure. False when it is no JSON object.
bool ReadShellOptions(std::string_view text, ShellOptions& options, std::string& error);
std::string ShellOptionsText(const ShellOptions& options);

}  // namespace hullrider
