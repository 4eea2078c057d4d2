// What the hand is for: keys and the volume knob. They paint within their frames, over the bare metal.
#pragma once

#include "display/brush.h"
#include "display/panel.h"

namespace hullrider {

struct ControlState {
    bool enabled = true;
    bool hover = false;
    bool pressed = false;
};

void PaintKey(Brush& brush, const Frame& frame, PanelElement key, const PanelModel& model, ControlState state);
void PaintVolume(Brush& brush, const Frame& frame, const PanelModel& model, ControlState state);

}  // namespace hullrider
