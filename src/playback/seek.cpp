#include "playback/seek.h"

#include <algorithm>
#include <cmath>

#include "audio/bass.h"
#include "playback/stream_slots.h"

namespace hullrider {

bool SeekTo(PlaybackState& playback, double seconds) {
    const StreamSlot handle = CurrentHandle(playback);
    if (handle == 0 || !std::isfinite(seconds) || seconds < 0.0 || seconds >= playback.songLengthSec) return false;
    if (!BASS_ChannelSetPosition(handle, BASS_ChannelSeconds2Bytes(handle, seconds), BASS_POS_BYTE)) return false;
    playback.startSec = std::min(playback.startSec, seconds);
    if (seconds >= playback.endSec) playback.endSec = playback.songLengthSec;
    return true;
}

}  // namespace hullrider
