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

// The first control of that class that says that text, however deep it lies; null stands for any class, any text. Null
// when there is none.
inline HWND FindControl(HWND window, const wchar_t* className, const wchar_t* text) {
    struct Search {
        const wchar_t *className, *text;
        HWND found;
    } search{className, text, nullptr};
    const auto match = [](HWND control, LPARAM parameter) -> BOOL {
        Search& wanted = *reinterpret_cast<Search*>(parameter);
        wchar_t name[64] = {};
        GetClassNameW(control, name, 64);
        if (wanted.className != nullptr && lstrcmpiW(name, wanted.className) != 0) return TRUE;
        if (wanted.text != nullptr && TextIn(control) != wanted.text) return TRUE;
        wanted.found = control;
        return FALSE;
    };
    EnumChildWindows(window, match, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

}  // namespace hullrider
