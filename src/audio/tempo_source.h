// Plays another source faster or slower at its own pitch. Its own frames are those of the other source, so positions
// and lengths are in the time of the material, not of its playing.
#pragma once

#include <memory>

#include "audio/source.h"

namespace hullrider {

class Channel;

// Tempo change in percent: half to three times the speed.
inline constexpr float kSlowest = -50.0f, kFastest = 200.0f;

// Plays the source of `channel`, a decoding channel that nothing else plays from; otherwise null.
std::unique_ptr<Source> OpenTempoSource(std::shared_ptr<Channel> channel, uint32_t mixRate);

}  // namespace hullrider
