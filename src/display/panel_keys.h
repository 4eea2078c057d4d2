// The keyboard on the panel: which element has the focus, and what a key does there. Pure.
#pragma once

#include <cstdint>
#include <optional>

#include "display/panel_elements.h"
#include "display/panel_mouse.h"

namespace hullrider {

enum class PanelKey : uint8_t { kForward, kBack, kAct, kLess, kMore, kLeave };

class PanelKeys {
public:
    // Keys skip elements that are not enabled; one that no longer is loses the focus.
    void Enable(const ElementSet& enabled);

    // False when the key means nothing here, so that the window may use it. Otherwise `action` is what to do, if
    // anything: the focus moves through the elements in their order and around; acting on it is a click; less and more
    // turn the volume and move within the song.
    bool Press(PanelKey key, const PanelModel& model, std::optional<PanelAction>& action);

    std::optional<PanelElement> Focus() const { return focus_; }
    void Leave() { focus_.reset(); }

private:
    bool Move(int step);
    std::optional<PanelAction> Act() const;
    std::optional<PanelAction> Change(int step, const PanelModel& model) const;

    ElementSet enabled_;
    std::optional<PanelElement> focus_;
};

}  // namespace hullrider
