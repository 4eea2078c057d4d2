// The error code that a call leaves for its thread.
#pragma once

namespace hullrider {

void SetAudioError(int code);

// How a call ends: it leaves its code and returns what these return, false (or 0) or true.
inline bool Fail(int code) {
    SetAudioError(code);
    return false;
}
inline bool Succeed() {
    SetAudioError(0);
    return true;
}

}  // namespace hullrider
