// The controls of another process's windows.
#pragma once

#include <windows.h>

#include <string>

namespace hullrider {

inline std::wstring TextIn(HWND control) {
    wchar_t text[256] = {};
    SendMessageW(control, WM_GETTEXT, 256, reinterpret_cast<LPARAM>(text));
    return text;
}

// The first control of that class and text; null when there is none.
inline HWND FindControl(HWND window, const wchar_t* className, const std::wstring& text) {
    HWND control = nullptr;
    do {
        control = FindWindowExW(window, control, className, nullptr);
    } while (control != nullptr && TextIn(control) != text);
    return control;
}

}  // namespace hullrider
