// The parts that never move: the brushed metal, the display's frame and glass, the engraving. Pure except for text.
#pragma once

#include "display/brush.h"

namespace hullrider {

// Paints the whole canvas.
void PaintFaceplate(Brush& brush, const PanelScale& scale);

}  // namespace hullrider
