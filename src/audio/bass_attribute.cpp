// Volume, level and tempo of a channel.
#include <algorithm>
#include <cmath>
#include <optional>

#include "audio/channel_call.h"
#include "audio/tempo_source.h"

using namespace hullrider;

namespace {

constexpr float kLoudest = 64.0f;

// Sets the error when it is not.
bool IsVolume(uint32_t attribute, float value) {
    if (attribute != BASS_ATTRIB_VOL) return Fail(BASS_ERROR_ILLTYPE);
    return (value >= 0.0f && value <= kLoudest) || Fail(BASS_ERROR_ILLPARAM);
}

bool SetTempo(Channel& channel, float percent) {
    if (!channel.Tempo()) return Fail(BASS_ERROR_ILLTYPE);
    if (!(percent >= kSlowest && percent <= kFastest)) return Fail(BASS_ERROR_ILLPARAM);
    channel.SetTempo(percent);
    return true;
}

bool GetTempo(const Channel& channel, float* percent) {
    const std::optional<float> tempo = channel.Tempo();
    if (!tempo) return Fail(BASS_ERROR_ILLTYPE);
    if (percent == nullptr) return Fail(BASS_ERROR_ILLPARAM);
    *percent = *tempo;
    return true;
}

bool GetBitRate(const Channel& channel, float* value) {
    const uint32_t rate = channel.BitRate();
    if (rate == 0) return Fail(BASS_ERROR_NOTAVAIL);
    if (value == nullptr) return Fail(BASS_ERROR_ILLPARAM);
    *value = static_cast<float>(rate);
    return true;
}

uint32_t LevelWord(float peak) {
    return static_cast<uint32_t>(std::lround(std::min(peak, 1.0f) * 32768.0f));
}

}  // namespace

bool BASS_ChannelSetAttribute(uint32_t handle, uint32_t attribute, float value) {
    const ChannelCall call(handle);
    if (call && attribute == BASS_ATTRIB_TEMPO) return SetTempo(*call.channel, value);
    if (!call || !IsVolume(attribute, value)) return false;
    call.channel->ChannelVolume().Set(value);
    call.engine->TheOutput().Hasten();
    return true;
}

bool BASS_ChannelGetAttribute(uint32_t handle, uint32_t attribute, float* value) {
    const ChannelCall call(handle);
    if (call && attribute == BASS_ATTRIB_TEMPO) return GetTempo(*call.channel, value);
    if (call && attribute == BASS_ATTRIB_BITRATE) return GetBitRate(*call.channel, value);
    if (!call || !IsVolume(attribute, 0.0f)) return false;
    if (value == nullptr) return Fail(BASS_ERROR_ILLPARAM);
    *value = call.channel->ChannelVolume().Get();
    return true;
}

bool BASS_ChannelSlideAttribute(uint32_t handle, uint32_t attribute, float value, uint32_t timeMs) {
    const ChannelCall call(handle);
    if (!call || !IsVolume(attribute, value)) return false;
    call.channel->ChannelVolume().SlideTo(value, timeMs);
    call.engine->TheOutput().Hasten();
    return true;
}

bool BASS_ChannelIsSliding(uint32_t handle, uint32_t attribute) {
    const ChannelCall call(handle);
    if (!call || !IsVolume(attribute, 0.0f)) return false;
    return call.channel->ChannelVolume().Sliding();
}

uint32_t BASS_ChannelGetLevel(uint32_t handle) {
    const ChannelCall call(handle);
    if (!call) return BASS_LEVEL_ERROR;
    if (call.channel->State() != RunState::kPlaying || call.channel->Starved()) {
        return Fail(BASS_ERROR_NOPLAY), BASS_LEVEL_ERROR;
    }
    const StereoPeak peak = call.channel->Level().Peak();
    return LevelWord(peak.right) << 16 | LevelWord(peak.left);
}
