// What never moves: the brushed metal, the display's frame and glass, and what is engraved. Pure but for the text.
#pragma once

#include "display/brush.h"

namespace hullrider {

// Paints the whole canvas.
void PaintFaceplate(Brush& brush, const PanelScale& scale);

}  // namespace hullrider
