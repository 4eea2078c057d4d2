#include "app/menu_win.h"

#include "app/commands.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

HMENU BuildPopup(const MenuPopup& popup) {
    const HMENU menu = CreatePopupMenu();
    for (const int32_t id : popup.commands) {
        AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(id), WideFromUtf8(FindCommand(id)->text).c_str());
    }
    return menu;
}

void AppendCommand(HMENU menu, int32_t id, const wchar_t* text) {
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(id), text);
}

}  // namespace

HMENU BuildMainMenu() {
    const HMENU menu = CreateMenu();
    for (const MenuPopup& popup : MainMenu()) {
        const auto popupMenu = reinterpret_cast<UINT_PTR>(BuildPopup(popup));
        AppendMenuW(menu, MF_POPUP, popupMenu, WideFromUtf8(popup.text).c_str());
    }
    return menu;
}

HMENU BuildTrayMenu(bool closesToTray) {
    const HMENU menu = CreatePopupMenu();
    AppendCommand(menu, kShowPlayerCommand, L"&Show the Player");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendCommand(menu, kPlayPauseCommand, L"&Play/Pause");
    AppendCommand(menu, kNextSongCommand, L"&Next Song");
    AppendCommand(menu, kPreviousSongCommand, L"P&revious Song");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendCommand(menu, kCloseToTrayItem, L"&Keep Playing When the Window Is Closed");
    CheckMenuItem(menu, kCloseToTrayItem, closesToTray ? MF_CHECKED : MF_UNCHECKED);
    AppendCommand(menu, kExitCommand, L"E&xit");
    SetMenuDefaultItem(menu, kShowPlayerCommand, FALSE);
    return menu;
}

}  // namespace hullrider
