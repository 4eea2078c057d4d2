// "ShellOptions.json": a JSON object with "x", "y", "width" and "height" (pixels), "maximized", "closeToTray" and
// "equalLoudness" (booleans). A value whose key is missing or has the wrong type stays unchanged. UI thread.
#pragma once

#include <string>
#include <string_view>

#include "state/shell_state.h"

namespace hullrider {

// A file that is not a JSON object is reported on the error stream and kept as "PATH.bad". A missing file is no error.
void LoadShellOptions(const std::string& path, ShellOptions& options);

// On failure returns false, prints a line on the error stream and leaves the old file.
bool SaveShellOptions(const std::string& path, const ShellOptions& options);

// The same on the file's text. Pure. False when it is not a JSON object.
bool ReadShellOptions(std::string_view text, ShellOptions& options, std::string& error);
std::string ShellOptionsText(const ShellOptions& options);

}  // namespace hullrider
