// Silences a sound system's own library on the error stream: the opener of the output reports a missing device, once.
// For live_device.cpp.
#pragma once

#include "audio/miniaudio_setup.h"

namespace hullrider {

void QuietBackend(ma_context& context);

}  // namespace hullrider
