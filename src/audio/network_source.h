// A radio stream as a source: received, decoded, and played at the pace at which it arrives.
#pragma once

#include <chrono>
#include <memory>
#include <stop_token>

#include "audio/source.h"

namespace hullrider {

// `path` of the request is an http or https URL. Returns when the first sound is decoded, at the latest after
// `timeout`, or when `stop` is requested. On failure returns null and sets a BASS_ERROR code. Any thread that may wait.
std::unique_ptr<Source> OpenNetworkSource(const SourceRequest& request, std::chrono::milliseconds timeout,
                                          const std::stop_token& stop, int& error);

}  // namespace hullrider
