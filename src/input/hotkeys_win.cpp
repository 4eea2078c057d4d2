#include "input/hotkeys_win.h"

#include "platform/text_win.h"

namespace hullrider {

std::vector<RefusedHotkey> RegisterHotkeys(HWND window, const HotkeyBindings& bindings) {
    std::vector<RefusedHotkey> refused;
    for (const Hotkey& hotkey : HotkeysToRegister(bindings)) {
        if (RegisterHotKey(window, hotkey.action, hotkey.modifiers, static_cast<UINT>(hotkey.vkKey)) == 0) {
            refused.push_back({hotkey, SystemErrorText(GetLastError())});
        }
    }
    return refused;
}

void UnregisterHotkeys(HWND window) {
    constexpr int kUnregistered = 15;
    for (int action = 0; action < kUnregistered; ++action) UnregisterHotKey(window, action);
}

void UnregisterAllHotkeys(HWND window) {
    UnregisterHotkeys(window);
    UnregisterHotKey(window, kActionsWithKeys - 1);
    for (int action = kShowPlayerKey; action <= kMediaPlayPauseKey; ++action) UnregisterHotKey(window, action);
}

int32_t ActionOfAppCommand(LPARAM parameter) {
    switch (GET_APPCOMMAND_LPARAM(parameter)) {
        case APPCOMMAND_MEDIA_NEXTTRACK:
            return kMediaNextKey;
        case APPCOMMAND_MEDIA_PREVIOUSTRACK:
            return kMediaPreviousKey;
        case APPCOMMAND_MEDIA_STOP:
            return kMediaStopKey;
        case APPCOMMAND_MEDIA_PLAY_PAUSE:
            return kMediaPlayPauseKey;
        default:
            return -1;
    }
}

}  // namespace hullrider
