// What the display draws as a bar: the level meter and the song.
#pragma once

#include <cstdint>

#include "display/brush.h"
#include "display/panel.h"

namespace hullrider {

inline constexpr int32_t kMeterSegments = 36;

// What one channel of the meter shows, in segments. `peak` is the one that is held, 0 for none.
struct MeterBar {
    int32_t lit = 0;
    int32_t peak = 0;

    bool operator==(const MeterBar&) const = default;
};

struct MeterBars {
    MeterBar left, right;

    bool operator==(const MeterBars&) const = default;
};

void PaintMeter(Brush& brush, const Frame& frame, const MeterBars& bars);
void PaintSongBar(Brush& brush, const Frame& frame, const PanelModel& model);

}  // namespace hullrider
