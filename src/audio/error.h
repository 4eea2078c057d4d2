// The error code that a call sets for its thread.
#pragma once

namespace hullrider {

void SetAudioError(int code);

// The ends of a call: they set the code and return false (or 0), or true.
inline bool Fail(int code) {
    SetAudioError(code);
    return false;
}
inline bool Succeed() {
    SetAudioError(0);
    return true;
}

}  // namespace hullrider
