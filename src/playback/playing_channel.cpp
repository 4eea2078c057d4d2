#include "playback/playing_channel.h"

#include "audio/bass.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"

namespace hullrider {

ChannelReading ReadChannel(const PlaybackState& playback) {
    const StreamSlot handle = CurrentHandle(playback);
    if (handle == 0) return {};
    return {PositionSec(handle), BASS_ChannelIsActive(handle) == BASS_ACTIVE_PAUSED};
}

StereoLevel ReadLevel(const PlaybackState& playback) {
    constexpr float kFull = 32768.0F;
    const StreamSlot handle = CurrentHandle(playback);
    const uint32_t level = handle == 0 ? BASS_LEVEL_ERROR : BASS_ChannelGetLevel(handle);
    if (level == BASS_LEVEL_ERROR) return {};
    return {static_cast<float>(level & 0xFFFFU) / kFull, static_cast<float>(level >> 16U) / kFull};
}

}  // namespace hullrider
