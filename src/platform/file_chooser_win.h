// The system's own windows for choosing a folder or a file. Windows sources only; UI thread. They return when the user
// is done; timers go on meanwhile, and the owner may be gone then.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace hullrider {

// The full path of what was chosen, UTF-8; nothing when the user chose nothing. `startAt` is the folder that is shown
// first; empty or missing: the one that was shown last.
std::optional<std::string> ChooseFolder(HWND owner, const std::string& title, const std::string& startAt);

// One file that is there, of those whose names match `pattern` ("*.json") unless the user wants to see all.
std::optional<std::string> ChooseFile(HWND owner, const std::string& title, const std::string& kind,
                                      const std::string& pattern);

}  // namespace hullrider
