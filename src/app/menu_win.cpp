#include "app/menu_win.h"

namespace hullrider {

HMENU BuildMainMenu() {
    const HMENU menu = CreateMenu();
    const HMENU file = CreatePopupMenu();
    AppendMenuW(file, MF_STRING, kExitCommand, L"Exit");
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(file), L"&File");
    return menu;
}

}  // namespace hullrider
