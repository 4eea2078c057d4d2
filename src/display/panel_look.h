// All that the panel's picture depends on, besides its size and theme.
#pragma once

#include <cstdint>
#include <optional>

#include "display/panel.h"
#include "display/panel_elements.h"

namespace hullrider {

inline constexpr int32_t kMeterSegments = 36;

// What one channel of the meter shows, in segments. `peak` is the held peak, 0 for none.
struct MeterBar {
    int32_t lit = 0;
    int32_t peak = 0;

    bool operator==(const MeterBar&) const = default;
};

struct MeterBars {
    MeterBar left, right;

    bool operator==(const MeterBars&) const = default;
};

// How long the song's names have been shown, which decides how far they have scrolled.
struct LineMotion {
    double shownSec = 0.0;
};

struct PanelLook {
    PanelModel model;
    std::optional<PanelElement> hover = std::nullopt, pressed = std::nullopt;
    MeterBars meter = {};
    LineMotion motion = {};
    std::optional<double> pointed = std::nullopt;  // where the mouse is on the song bar: a place in the song, 0 to 1
    bool volumeIsNews = false;                     // it is being turned
    std::optional<PanelElement> focus = std::nullopt;  // of the keyboard
};

}  // namespace hullrider
