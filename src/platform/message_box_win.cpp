#include <windows.h>

#include "platform/message_box_system.h"
#include "platform/text_win.h"

namespace hullrider {

void ShowSystemErrorBox(std::string_view text) {
    MessageBoxW(GetActiveWindow(), WideFromUtf8(text).c_str(), L"Error", MB_OK | MB_ICONERROR);
}

}  // namespace hullrider
