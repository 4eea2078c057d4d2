// The controls: keys and the volume knob. They paint within their frames, over the bare metal.
#pragma once

#include <optional>

#include "display/brush.h"
#include "display/icons.h"
#include "display/panel.h"

namespace hullrider {

struct ControlState {
    bool enabled = true;
    bool hover = false;
    bool pressed = false;
    bool hasFocus = false;

    bool operator==(const ControlState&) const = default;
};

// What is on a key. Keys that toggle something have a lamp.
struct KeyFace {
    Icon icon = Icon::kPower;
    std::optional<bool> isLit = std::nullopt;
};

void PaintKey(Brush& brush, const Frame& frame, const KeyFace& face, ControlState state);
// The ring around an element that has the keyboard's focus.
void PaintFocus(Brush& brush, const Frame& frame, bool isRound);
void PaintVolume(Brush& brush, const Frame& frame, const PanelModel& model, ControlState state);

}  // namespace hullrider
