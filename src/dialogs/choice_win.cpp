#include "dialogs/choice_win.h"

#include "platform/text_win.h"

namespace hullrider {

void AddToChoice(HWND choice, const std::string& text, int32_t value) {
    const LRESULT at = SendMessageW(choice, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideFromUtf8(text).c_str()));
    SendMessageW(choice, CB_SETITEMDATA, static_cast<WPARAM>(at), value);
}

int32_t ChosenIn(HWND choice) {
    const LRESULT at = SendMessageW(choice, CB_GETCURSEL, 0, 0);
    return static_cast<int32_t>(SendMessageW(choice, CB_GETITEMDATA, static_cast<WPARAM>(at), 0));
}

void Choose(HWND choice, int32_t value, std::string (*name)(int32_t)) {
    if (ChosenIn(choice) == value && SendMessageW(choice, CB_GETCURSEL, 0, 0) != CB_ERR) return;
    const auto count = static_cast<int>(SendMessageW(choice, CB_GETCOUNT, 0, 0));
    int at = 0;
    while (at < count && SendMessageW(choice, CB_GETITEMDATA, static_cast<WPARAM>(at), 0) != value) ++at;
    if (at == count) AddToChoice(choice, name(value), value);
    SendMessageW(choice, CB_SETCURSEL, static_cast<WPARAM>(at), 0);
}

}  // namespace hullrider
