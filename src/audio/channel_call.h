// What nearly every call on a channel begins with.
#pragma once

#include <cstdint>
#include <memory>

#include "audio/bass.h"
#include "audio/channel.h"
#include "audio/engine.h"
#include "audio/error.h"

namespace hullrider {

// The channel of a handle, and its engine. False, with the error set, when there is none.
struct ChannelCall {
    explicit ChannelCall(uint32_t handle) : engine(CurrentEngine()) {
        if (engine == nullptr) return;
        channel = engine->Channels().Find(handle);
        SetAudioError(channel == nullptr ? BASS_ERROR_HANDLE : BASS_OK);
    }
    explicit operator bool() const { return channel != nullptr; }

    std::shared_ptr<Engine> engine;
    std::shared_ptr<Channel> channel;
};

}  // namespace hullrider
