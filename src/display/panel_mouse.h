// What the mouse means on the panel: which element it is over, which one it holds, and what is to happen. Pure.
#pragma once

#include <optional>

#include "display/panel_elements.h"

namespace hullrider {

// What the user wants: a CommandId, with the value from 0 to 1 of those that have one.
struct PanelAction {
    int32_t command = 0;
    double value = 0.0;

    bool operator==(const PanelAction&) const = default;
};

class PanelMouse {
public:
    // Elements that are not enabled are not there for the mouse.
    void Enable(const ElementSet& enabled) { enabled_ = enabled; }

    // `volume` is what the knob shows. A key acts when it is let go where it was pressed; the knob follows the hand.
    std::optional<PanelAction> Move(DesignPoint place);
    std::optional<PanelAction> Press(DesignPoint place, double volume);
    std::optional<PanelAction> Release(DesignPoint place);
    void Leave() { hover_.reset(); }
    void LoseCapture() { held_.reset(); }

    // A turn of the wheel anywhere on the panel; 1 notch away from the user makes it louder.
    std::optional<PanelAction> Wheel(double notches, double volume) const;

    std::optional<PanelElement> Hover() const;
    std::optional<PanelElement> Pressed() const;
    bool Holds() const { return held_.has_value(); }

private:
    std::optional<PanelElement> EnabledAt(DesignPoint place) const;

    ElementSet enabled_;
    std::optional<PanelElement> hover_, held_;
    DesignPoint pressedAt_;
    double volumeAtPress_ = 0.0;
};

}  // namespace hullrider
