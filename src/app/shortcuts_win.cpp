#include "app/shortcuts_win.h"

#include <utility>

#include "app/commands.h"

namespace hullrider {

namespace {

bool IsHeld(int key) {
    return GetAsyncKeyState(key) < 0;
}

}  // namespace

int32_t Shortcuts::CommandOfKey(WPARAM key) {
    if (GetKeyState(VK_CONTROL) >= 0) return 0;
    if (key == VK_OEM_PLUS && !std::exchange(plusHeld_, true)) return kFavoriteUpCommand;
    if (key == VK_OEM_MINUS && !std::exchange(minusHeld_, true)) return kFavoriteDownCommand;
    return 0;
}

void Shortcuts::ReleaseLatches() {
    plusHeld_ = plusHeld_ && IsHeld(VK_CONTROL) && IsHeld(VK_OEM_PLUS);
    minusHeld_ = minusHeld_ && IsHeld(VK_CONTROL) && IsHeld(VK_OEM_MINUS);
}

}  // namespace hullrider
