// A source that plays another one faster or slower at its own pitch. Its own frames are the other one's, so places and
// lengths are told in the time of what is played, not in the time that it takes.
#pragma once

#include <memory>

#include "audio/source.h"

namespace hullrider {

class Channel;

// Percent that the tempo is raised by: half to three times as fast.
inline constexpr float kSlowest = -50.0f, kFastest = 200.0f;

// Plays the source of `channel`, which must be a decoding channel that nobody else plays from; null when somebody does.
std::unique_ptr<Source> OpenTempoSource(std::shared_ptr<Channel> channel, uint32_t mixRate);

}  // namespace hullrider
