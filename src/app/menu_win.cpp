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

}  // namespace

HMENU BuildMainMenu() {
    const HMENU menu = CreateMenu();
    for (const MenuPopup& popup : MainMenu()) {
        const auto popupMenu = reinterpret_cast<UINT_PTR>(BuildPopup(popup));
        AppendMenuW(menu, MF_POPUP, popupMenu, WideFromUtf8(popup.text).c_str());
    }
    return menu;
}

}  // namespace hullrider
