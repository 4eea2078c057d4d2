#include "audio/ahead.h"

#include "audio/channel_call.h"

namespace hullrider {

std::vector<StereoPeak> PeaksAhead(uint32_t handle, uint32_t spanMs) {
    const ChannelCall call(handle);
    if (!call || call.channel->State() == RunState::kPlaying) return {};
    return call.channel->PeaksAhead(size_t{call.engine->Rate()} * spanMs / 1000);
}

double QuietSec(uint32_t handle) {
    const ChannelCall call(handle);
    if (!call || call.channel->State() != RunState::kPlaying) return 0.0;
    return call.channel->Level().QuietSec();
}

}  // namespace hullrider
