#include "display/panel.h"

#include <algorithm>
#include <cmath>

#include "audio/bass.h"
#include "playback/play_next.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"

namespace hullrider {

namespace {

constexpr double kSteps = 500.0;  // the panel's width in its own space

// Finer steps than the panel can show would have it drawn again for nothing.
double OnPanel(double fraction) {
    return std::round(std::clamp(fraction, 0.0, 1.0) * kSteps) / kSteps;
}

}  // namespace

PanelText MakePanelText(const PlaybackState& playback) {
    PanelText text;
    const StreamSlot handle = CurrentHandle(playback);
    if (handle == 0) {
        text.title = TroubleText(playback.trouble);
        return text;
    }
    const double positionSec = PositionSec(handle);
    const double lengthSec = std::max(playback.songLengthSec, 0.001);
    text.album = playback.currentAlbum;
    text.title = playback.currentTitle;
    text.time = FormatTime(positionSec) + " / " + FormatTime(playback.songLengthSec);
    text.windowFrom = OnPanel(playback.startSec / lengthSec);
    text.windowTo = OnPanel(playback.endSec / lengthSec);
    text.position = OnPanel(positionSec / lengthSec);
    text.playing = BASS_ChannelIsActive(handle) != BASS_ACTIVE_PAUSED;
    return text;
}

}  // namespace hullrider
