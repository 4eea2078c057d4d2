#include <dlfcn.h>

#include "audio/quiet_backend.h"

namespace hullrider {

namespace {

void IgnoreAlsaError(const char*, int, const char*, int, const char*, ...) {}

}  // namespace

// ALSA explains at length why a card cannot be opened. miniaudio loads its library at run time; the handler must be set
// in that copy.
void QuietBackend(ma_context& context) {
    using Handler = void (*)(const char*, int, const char*, int, const char*, ...);
    using SetHandler = int (*)(Handler);
    if (context.backend != ma_backend_alsa) return;
    void* const found = dlsym(context.alsa.asoundSO, "snd_lib_error_set_handler");
    if (found != nullptr) reinterpret_cast<SetHandler>(found)(IgnoreAlsaError);
}

}  // namespace hullrider
