#include "app/shortcuts_win.h"

#include <utility>

#include "app/commands.h"

namespace hullrider {

namespace {

bool IsHeld(int key) {
    return GetAsyncKeyState(key) < 0;
}

int32_t PlainKey(WPARAM key, bool isRepeated) {
    if (key == VK_UP) return kVolumeUpCommand;
    if (key == VK_DOWN) return kVolumeDownCommand;
    if (isRepeated) return 0;  // a key held too long must not skip through the library
    if (key == 'M') return kMuteCommand;
    if (key == VK_SPACE) return kPlayPauseCommand;
    if (key == VK_RIGHT) return kNextSongCommand;
    if (key == VK_LEFT) return kPreviousSongCommand;
    return 0;
}

}  // namespace

int32_t Shortcuts::CommandOfKey(WPARAM key, bool isRepeated) {
    if (GetKeyState(VK_CONTROL) >= 0) return PlainKey(key, isRepeated);
    if (key == VK_OEM_PLUS && !std::exchange(plusHeld_, true)) return kFavoriteUpCommand;
    if (key == VK_OEM_MINUS && !std::exchange(minusHeld_, true)) return kFavoriteDownCommand;
    return 0;
}

void Shortcuts::ReleaseLatches() {
    plusHeld_ = plusHeld_ && IsHeld(VK_CONTROL) && IsHeld(VK_OEM_PLUS);
    minusHeld_ = minusHeld_ && IsHeld(VK_CONTROL) && IsHeld(VK_OEM_MINUS);
}

}  // namespace hullrider
