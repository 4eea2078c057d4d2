// The display's bars: the level meter and the song.
#pragma once

#include "display/brush.h"
#include "display/panel_look.h"

namespace hullrider {

void PaintMeter(Brush& brush, const Frame& frame, const MeterBars& bars);
void PaintSongBar(Brush& brush, const Frame& frame, const PanelLook& look);

}  // namespace hullrider
