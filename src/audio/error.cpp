#include "audio/error.h"

#include "audio/bass.h"

namespace hullrider {

namespace {

thread_local int lastError = BASS_OK;

}  // namespace

void SetAudioError(int code) {
    lastError = code;
}

}  // namespace hullrider

int BASS_ErrorGetCode() {
    return hullrider::lastError;
}
