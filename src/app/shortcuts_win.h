// Keys of the main window while it has the focus: Space plays and pauses, the arrow keys go to the next and the
// previous song and turn the volume, Ctrl+= and Ctrl+- raise and lower the favorite count, once however long they are
// held. UI thread.
#pragma once

#include <windows.h>

#include <cstdint>

namespace hullrider {

class Shortcuts {
public:
    // The command of a key that went down, 0 for none. `isRepeated`: it has been held since an earlier message.
    int32_t CommandOfKey(WPARAM key, bool isRepeated);

    // Notices keys that are no longer held. Ten times a second.
    void ReleaseLatches();

private:
    bool plusHeld_ = false, minusHeld_ = false;
};

}  // namespace hullrider
