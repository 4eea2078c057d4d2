// What the panel's elements do. UI thread.
#pragma once

#include "app/player.h"
#include "display/panel_layout.h"
#include "display/panel_mouse.h"

namespace hullrider {

// Those that do something; the others are shown as not available.
ElementSet EnabledElements();

void RunPanelAction(Player& player, const PanelAction& action);

}  // namespace hullrider
