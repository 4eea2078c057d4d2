// The mouse on the panel: which element it is over, which one it holds, and the resulting action. Pure.
#pragma once

#include <optional>

#include "display/panel_elements.h"

namespace hullrider {

// A CommandId, with a value from 0 to 1 if it takes one.
struct PanelAction {
    int32_t command = 0;
    double value = 0.0;

    bool operator==(const PanelAction&) const = default;
};

class PanelMouse {
public:
    // The mouse ignores elements that are not enabled.
    void Enable(const ElementSet& enabled) { enabled_ = enabled; }

    // `volume` is what the knob shows. A key acts when it is released where it was pressed. The knob follows a drag,
    // and a click on it mutes. The song goes where the mouse is when its bar is released.
    std::optional<PanelAction> Move(DesignPoint place);
    void Press(DesignPoint place, double volume);
    std::optional<PanelAction> Release(DesignPoint place);
    void Leave() { hover_.reset(); }
    void LoseCapture() { held_.reset(); }

    // A turn of the wheel anywhere on the panel; positive notches, away from the user, make it louder.
    std::optional<PanelAction> Wheel(double notches, double volume) const;

    std::optional<PanelElement> Hover() const;
    std::optional<PanelElement> Pressed() const;
    bool Holds() const { return held_.has_value(); }

    // Where the mouse is on the song bar: a place in the song, 0 to 1. Empty when it is elsewhere.
    std::optional<double> PointedInSong() const;

private:
    std::optional<PanelElement> EnabledAt(DesignPoint place) const;

    ElementSet enabled_;
    std::optional<PanelElement> hover_, held_;
    DesignPoint pressedAt_, last_;
    bool isTurned_ = false;  // the knob, since it was pressed
    double volumeAtPress_ = 0.0;
};

}  // namespace hullrider
