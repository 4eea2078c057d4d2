// What the panel says. UI thread.
#pragma once

#include <string>

#include "state/playback_state.h"

namespace hullrider {

// The panel's lines, UTF-8. Two panels that are equal look equal.
struct PanelText {
    std::string album;
    std::string title;
    std::string time;         // "1:05 / 3:12", where the song is and its length
    double windowFrom = 0.0;  // the play window and the position within the song, 0 to 1
    double windowTo = 0.0;
    double position = 0.0;
    bool playing = false;

    bool operator==(const PanelText&) const = default;
};

// What to show for what plays now; a hint at what to do when nothing does.
PanelText MakePanelText(const PlaybackState& playback);

}  // namespace hullrider
