// The system's dialogs for choosing a folder or a file. Windows sources only; UI thread. They return when the user is
// done; timers keep running meanwhile and may have destroyed the owner.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace hullrider {

// The full path of what was chosen, UTF-8; nothing when the user canceled. `startAt` is the folder shown first; empty
// or missing: the one shown last.
std::optional<std::string> ChooseFolder(HWND owner, const std::string& title, const std::string& startAt);

// An existing file. Those whose names match `pattern` ("*.json") are listed, unless the user asks for all.
std::optional<std::string> ChooseFile(HWND owner, const std::string& title, const std::string& kind,
                                      const std::string& pattern);

}  // namespace hullrider
