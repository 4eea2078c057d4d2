// Playing, positions and times of a channel.
#include <algorithm>
#include <cmath>

#include "audio/channel_call.h"

using namespace hullrider;

namespace {

uint64_t FrameBytes(const Channel& channel) {
    return uint64_t{4} * channel.Format().channels;
}

}  // namespace

bool BASS_ChannelPlay(uint32_t handle, bool restart) {
    const ChannelCall call(handle);
    if (!call) return false;
    if ((call.channel->Flags() & BASS_STREAM_DECODE) != 0) return Fail(BASS_ERROR_DECODE);
    call.channel->Play(restart);
    call.engine->Decoders().Attend(call.channel);
    call.engine->TheOutput().Hasten();
    return true;
}

bool BASS_ChannelPause(uint32_t handle) {
    const ChannelCall call(handle);
    if (!call) return false;
    return call.channel->Pause() || Fail(BASS_ERROR_NOPLAY);
}

bool BASS_ChannelStop(uint32_t handle) {
    const ChannelCall call(handle);
    if (!call) return false;
    call.channel->Stop();
    return true;
}

bool BASS_ChannelUpdate(uint32_t handle, uint32_t length) {
    const ChannelCall call(handle);
    if (!call) return false;
    call.channel->Prepare(length);
    call.engine->Decoders().Attend(call.channel);
    return call.channel->WaitUntilPrepared() || Fail(BASS_ERROR_ENDED);
}

uint32_t BASS_ChannelFlags(uint32_t handle, uint32_t flags, uint32_t mask) {
    const ChannelCall call(handle);
    if (!call) return ~0U;
    if ((mask & ~BASS_SAMPLE_LOOP) != 0) return Fail(BASS_ERROR_ILLPARAM), ~0U;
    if (mask != 0) call.channel->SetLoop((flags & BASS_SAMPLE_LOOP) != 0);
    return call.channel->Flags();
}

uint32_t BASS_ChannelIsActive(uint32_t handle) {
    const ChannelCall call(handle);
    if (!call) return BASS_ACTIVE_STOPPED;
    switch (call.channel->State()) {
        case RunState::kPlaying:
            return call.channel->Starved() ? BASS_ACTIVE_STALLED : BASS_ACTIVE_PLAYING;
        case RunState::kPaused:
            return BASS_ACTIVE_PAUSED;
        default:
            return BASS_ACTIVE_STOPPED;
    }
}

bool BASS_ChannelGetInfo(uint32_t handle, BASS_CHANNELINFO* info) {
    const ChannelCall call(handle);
    if (!call) return false;
    if (info == nullptr) return Fail(BASS_ERROR_ILLPARAM);
    const SourceFormat& format = call.channel->Format();
    *info = {format.rate, format.channels, call.channel->Flags(), format.type, call.channel->Path().c_str()};
    return true;
}

const char* BASS_ChannelGetTags(uint32_t handle, uint32_t tags) {
    const ChannelCall call(handle);
    if (!call) return nullptr;
    for (const TagBlock& block : call.channel->Tags()) {
        if (block.kind == tags && !block.text.empty()) return block.text.c_str();
    }
    thread_local std::string changing;
    for (TagBlock& block : call.channel->TagsNow(call.engine->LatencyFrames())) {
        if (block.kind != tags || block.text.empty()) continue;
        changing = std::move(block.text);
        return changing.c_str();
    }
    return Fail(BASS_ERROR_NOTAVAIL), nullptr;
}

uint64_t BASS_ChannelGetLength(uint32_t handle, uint32_t mode) {
    const ChannelCall call(handle);
    if (!call) return BASS_QWORD_ERROR;
    if (mode != BASS_POS_BYTE) return Fail(BASS_ERROR_ILLTYPE), BASS_QWORD_ERROR;
    return static_cast<uint64_t>(call.channel->Length()) * FrameBytes(*call.channel);
}

uint64_t BASS_ChannelGetPosition(uint32_t handle, uint32_t mode) {
    const ChannelCall call(handle);
    if (!call) return BASS_QWORD_ERROR;
    if (mode != BASS_POS_BYTE) return Fail(BASS_ERROR_ILLTYPE), BASS_QWORD_ERROR;
    const int64_t position = call.channel->Position(call.engine->LatencyFrames());
    return static_cast<uint64_t>(position) * FrameBytes(*call.channel);
}

bool BASS_ChannelSetPosition(uint32_t handle, uint64_t position, uint32_t mode) {
    const ChannelCall call(handle);
    if (!call) return false;
    if (mode != BASS_POS_BYTE) return Fail(BASS_ERROR_ILLTYPE);
    const uint64_t frame = position / FrameBytes(*call.channel);
    if (frame >= static_cast<uint64_t>(std::max<int64_t>(call.channel->Length(), 1))) return Fail(BASS_ERROR_POSITION);
    call.channel->SetPosition(static_cast<int64_t>(frame));
    call.engine->Decoders().Attend(call.channel);
    call.engine->TheOutput().Hasten();
    return true;
}

double BASS_ChannelBytes2Seconds(uint32_t handle, uint64_t bytes) {
    const ChannelCall call(handle);
    if (!call) return -1.0;
    const uint64_t frames = bytes / FrameBytes(*call.channel);
    return static_cast<double>(frames) / call.channel->Format().rate;
}

uint64_t BASS_ChannelSeconds2Bytes(uint32_t handle, double seconds) {
    const ChannelCall call(handle);
    if (!call) return BASS_QWORD_ERROR;
    const double frames = seconds * call.channel->Format().rate;
    constexpr double kMostFrames = 1e15;
    if (!(frames >= 0.0 && frames < kMostFrames)) return Fail(BASS_ERROR_ILLPARAM), BASS_QWORD_ERROR;
    // Rounding must not turn the time of a whole frame into one frame less.
    return static_cast<uint64_t>(frames + 1e-6) * FrameBytes(*call.channel);
}
