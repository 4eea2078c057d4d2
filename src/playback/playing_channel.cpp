#include "playback/playing_channel.h"

#include <cmath>

#include "audio/bass.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"

namespace hullrider {

namespace {

const char* CodecName(uint32_t type) {
    switch (type) {
        case BASS_CTYPE_STREAM_MP3:
            return "MP3";
        case BASS_CTYPE_STREAM_AAC:
            return "AAC";
        case BASS_CTYPE_STREAM_OGG:
            return "Vorbis";
        case BASS_CTYPE_STREAM_OPUS:
            return "Opus";
        case BASS_CTYPE_STREAM_FLAC:
            return "FLAC";
        default:
            return "";
    }
}

// The average wavers; what servers name are multiples of 8.
int32_t RoundedBitRate(float bitRate) {
    return static_cast<int32_t>(std::lround(bitRate / 8.0F)) * 8;
}

void ReadStream(StreamSlot handle, uint32_t active, ChannelReading& reading) {
    reading.isBuffering = active == BASS_ACTIVE_STALLED;
    BASS_CHANNELINFO info{};
    if (BASS_ChannelGetInfo(handle, &info)) reading.codec = CodecName(info.ctype);
    float bitRate = 0.0F;
    if (BASS_ChannelGetAttribute(handle, BASS_ATTRIB_BITRATE, &bitRate)) reading.bitRate = RoundedBitRate(bitRate);
}

}  // namespace

ChannelReading ReadChannel(const PlaybackState& playback) {
    const StreamSlot handle = CurrentHandle(playback);
    if (handle == 0) return {};
    const uint32_t active = BASS_ChannelIsActive(handle);
    ChannelReading reading{PositionSec(handle), active == BASS_ACTIVE_PAUSED, false, {}, 0};
    if (playback.item.kind == PlayItem::Kind::kStation) ReadStream(handle, active, reading);
    return reading;
}

StereoLevel ReadLevel(const PlaybackState& playback) {
    constexpr float kFull = 32768.0F;
    const StreamSlot handle = CurrentHandle(playback);
    const uint32_t level = handle == 0 ? BASS_LEVEL_ERROR : BASS_ChannelGetLevel(handle);
    if (level == BASS_LEVEL_ERROR) return {};
    return {static_cast<float>(level & 0xFFFFU) / kFull, static_cast<float>(level >> 16U) / kFull};
}

}  // namespace hullrider
