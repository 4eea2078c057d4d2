// Keys of the main window while it has the focus: Space plays and pauses, Right and Left go to the next and the
// previous song, Up and Down change the volume, M mutes, Ctrl+= and Ctrl+- raise and lower the favorite count once per
// press. An element of the panel that has the focus takes its keys first. UI thread.
#pragma once

#include <windows.h>

#include <cstdint>

namespace hullrider {

class Shortcuts {
public:
    // The command of a key press, 0 for none. `isRepeated`: the press is an auto-repeat.
    int32_t CommandOfKey(WPARAM key, bool isRepeated);

    // Notices released keys. Call it ten times a second.
    void ReleaseLatches();

private:
    bool plusHeld_ = false, minusHeld_ = false;
};

}  // namespace hullrider
