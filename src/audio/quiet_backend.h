// Keeps a sound system's own library from writing to the error stream: that there is no device is said once, by whoever
// opens the output. For live_device.cpp.
#pragma once

#include "audio/miniaudio_setup.h"

namespace hullrider {

void QuietBackend(ma_context& context);

}  // namespace hullrider
