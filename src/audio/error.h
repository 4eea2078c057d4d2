// The error code that a call leaves for its thread.
#pragma once

namespace hullrider {

void SetAudioError(int code);

}  // namespace hullrider
