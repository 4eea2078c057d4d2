#include "playback/stream_time.h"

#include <algorithm>
#include <cstdio>

#include "audio/bass.h"

namespace hullrider {

namespace {

double SecondsOf(StreamSlot handle, uint64_t bytes) {
    return bytes == BASS_QWORD_ERROR ? 0.0 : std::max(BASS_ChannelBytes2Seconds(handle, bytes), 0.0);
}

}  // namespace

double PositionSec(StreamSlot handle) {
    return SecondsOf(handle, BASS_ChannelGetPosition(handle, BASS_POS_BYTE));
}

double LengthSec(StreamSlot handle) {
    return SecondsOf(handle, BASS_ChannelGetLength(handle, BASS_POS_BYTE));
}

std::string FormatTime(double seconds) {
    constexpr double kLongestSec = 1e6;
    const int whole = seconds >= 0.0 && seconds < kLongestSec ? static_cast<int>(seconds) : 0;
    const int minutes = whole / 60;
    char text[32];
    if (minutes < 60) {
        std::snprintf(text, sizeof text, "%d:%02d", minutes, whole % 60);
    } else {
        std::snprintf(text, sizeof text, "%d:%02d:%02d", minutes / 60, minutes % 60, whole % 60);
    }
    return text;
}

}  // namespace hullrider
