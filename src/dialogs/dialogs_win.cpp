#include "dialogs/dialogs_win.h"

#include <string>

#include "dialogs/dialog_win.h"
#include "platform/console.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

struct Search {
    std::wstring className;
    HWND found = nullptr;
};

BOOL CALLBACK MatchClass(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    if (search.className != name) return TRUE;
    search.found = window;
    return FALSE;
}

BOOL CALLBACK CloseIfDialog(HWND window, LPARAM) {
    if (IsDialog(window)) CloseUnasked(window);
    return TRUE;
}

}  // namespace

void OpenDialog(HINSTANCE instance, const char* className, const char* title,
                const std::function<std::unique_ptr<Dialog>()>& make) {
    Search search{WideFromUtf8(className), nullptr};
    EnumThreadWindows(GetCurrentThreadId(), MatchClass, reinterpret_cast<LPARAM>(&search));
    if (search.found != nullptr) {
        ShowWindow(search.found, IsIconic(search.found) != 0 ? SW_RESTORE : SW_SHOW);
        SetForegroundWindow(search.found);
        return;
    }
    // Deletes itself when its window closes.
    Dialog* const dialog = make().release();
    if (dialog->Open(instance, className, title)) return;
    PrintErrorLine("The window could not be created: " + std::string(title));
    delete dialog;
}

void CloseDialogs() {
    EnumThreadWindows(GetCurrentThreadId(), CloseIfDialog, 0);
}

}  // namespace hullrider
