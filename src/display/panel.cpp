#include "display/panel.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "audio/bass.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

constexpr const char* kNoMusicText = "No music found. File > Select Local Folders";
constexpr const char* kNothingPlayableText = "None of the songs can be played";

double PositionSec(StreamSlot handle) {
    const uint64_t bytes = BASS_ChannelGetPosition(handle, BASS_POS_BYTE);
    return bytes == BASS_QWORD_ERROR ? 0.0 : std::max(BASS_ChannelBytes2Seconds(handle, bytes), 0.0);
}

}  // namespace

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

PanelText MakePanelText(const PlaybackState& playback) {
    PanelText text;
    const StreamSlot handle = CurrentHandle(playback);
    if (handle == 0) {
        text.title = playback.trouble == PlaybackTrouble::kNothingPlayable ? kNothingPlayableText : kNoMusicText;
        return text;
    }
    const double positionSec = PositionSec(handle);
    const double lengthSec = std::max(playback.songLengthSec, 0.001);
    text.album = playback.currentAlbum;
    text.title = playback.currentTitle;
    text.time = FormatTime(positionSec) + " / " + FormatTime(playback.songLengthSec);
    text.windowFrom = std::clamp(playback.startSec / lengthSec, 0.0, 1.0);
    text.windowTo = std::clamp(playback.endSec / lengthSec, 0.0, 1.0);
    text.position = std::clamp(positionSec / lengthSec, 0.0, 1.0);
    text.playing = BASS_ChannelIsActive(handle) != BASS_ACTIVE_PAUSED;
    return text;
}

}  // namespace hullrider
