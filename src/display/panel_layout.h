// The panel's design space, and how it maps to a window's pixels. Pure.
#pragma once

#include <cstdint>

namespace hullrider {

// A box in design units: the panel is 500 wide and 155 high.
struct Box {
    float x = 0.0F, y = 0.0F, width = 0.0F, height = 0.0F;

    bool Contains(float px, float py) const { return px >= x && px < x + width && py >= y && py < y + height; }
};

// A box in pixels of the window's client area.
struct PixelBox {
    int32_t x = 0, y = 0, width = 0, height = 0;

    bool operator==(const PixelBox&) const = default;
};

struct DesignPoint {
    float x = 0.0F, y = 0.0F;
};

// The panel fills the window. Boxes stretch with it in both directions, up to a limit; beyond it the panel keeps its
// shape and is centered. Text, icons and strokes are not stretched: they are scaled by `glyph`.
struct PanelScale {
    float x = 1.0F, y = 1.0F;  // pixels per design unit
    float glyph = 1.0F;        // the smaller of the two
    float originX = 0.0F, originY = 0.0F;

    // Edges are rounded, so that boxes that touch in the design touch in the window.
    PixelBox ToPixels(const Box& box) const;
    DesignPoint ToDesign(int32_t px, int32_t py) const;
};

PanelScale FitPanel(int32_t widthPx, int32_t heightPx);

inline constexpr Box kLcdBox{14.0F, 11.0F, 392.0F, 93.0F};
inline constexpr Box kWordmarkBox{338.0F, 115.0F, 68.0F, 23.0F};

}  // namespace hullrider
