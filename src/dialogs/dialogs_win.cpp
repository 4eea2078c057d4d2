#include "dialogs/dialogs_win.h"

#include <array>
#include <string_view>

#include "dialogs/dialog_kinds_win.h"
#include "dialogs/dialog_win.h"
#include "platform/console.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

struct DialogKind {
    std::string_view className;
    std::unique_ptr<Dialog> (*make)(const SharedHost& host);
};

constexpr std::array kKinds{
    DialogKind{"CustomRadioDialogClass", MakeRadioDialog},   DialogKind{"CustomAboutDialogClass", MakeAboutDialog},
    DialogKind{"CustomFavDialogClass", MakeFavoritesDialog}, DialogKind{"CustomFolderDialogClass", MakeFolderDialog},
    DialogKind{"CustomHotKeyDialogClass", MakeHotkeyDialog}, DialogKind{"CustomInfoDialogClass", MakeSongInfoDialog},
};

std::unique_ptr<Dialog> MakeDialog(const SharedHost& host, const char* className, const char* title) {
    for (const DialogKind& kind : kKinds) {
        if (kind.className == className) return kind.make(host);
    }
    return MakeNoticeDialog(std::string(title) + ": still to come. MusicSettings.json holds the settings.");
}

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
    if (IsDialog(window)) SendMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

}  // namespace

void OpenDialog(HINSTANCE instance, const std::shared_ptr<DialogHost>& host, const char* className, const char* title) {
    Search search{WideFromUtf8(className), nullptr};
    EnumThreadWindows(GetCurrentThreadId(), MatchClass, reinterpret_cast<LPARAM>(&search));
    if (search.found != nullptr) {
        ShowWindow(search.found, IsIconic(search.found) != 0 ? SW_RESTORE : SW_SHOW);
        SetForegroundWindow(search.found);
        return;
    }
    // Deletes itself when its window closes.
    Dialog* const dialog = MakeDialog(host, className, title).release();
    if (dialog->Open(instance, className, title)) return;
    PrintErrorLine("The window could not be created: " + std::string(title));
    delete dialog;
}

void CloseDialogs() {
    EnumThreadWindows(GetCurrentThreadId(), CloseIfDialog, 0);
}

}  // namespace hullrider
