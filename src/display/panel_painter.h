// Paints the panel, element by element: the faceplate once for each size and theme, then only what has changed. UI
// thread.
#pragma once

#include <optional>
#include <vector>

#include "display/brush.h"
#include "display/panel_look.h"
#include "display/panel_theme.h"
#include "display/text_raster.h"

namespace hullrider {

class PanelPainter {
public:
    explicit PanelPainter(TextRasterizer& rasterizer) : texts_(rasterizer) {}

    // Switches to other pixels, which must outlive their use, and repaints the faceplate. Every element must then be
    // painted.
    void Begin(const Canvas& canvas, const PanelTheme& theme);

    // Frees the memory that Begin allocated.
    void Release();

    // Paints these elements as they look now.
    void Paint(const ElementSet& elements, const PanelLook& look);

    // The names that have scrolled between the two times.
    ElementSet MovedLines(const PanelLook& look, LineMotion from, LineMotion to);

    const PanelScale& Scale() const { return scale_; }

private:
    TextCache texts_;
    std::optional<Canvas> canvas_;
    PanelTheme theme_;
    PanelScale scale_;
    std::vector<uint32_t> faceplate_;  // the bare panel, pixel for pixel
};

}  // namespace hullrider
