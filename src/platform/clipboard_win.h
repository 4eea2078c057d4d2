// The system's clipboard. UI thread. Windows sources only.
#pragma once

#include <windows.h>

#include <string_view>

namespace hullrider {

// Replaces the clipboard by a UTF-8 text whose lines end with "\n". False when another program holds the clipboard
// open.
bool CopyToClipboard(HWND owner, std::string_view text);

}  // namespace hullrider
