// What every painter of the panel receives, and how they paint text.
#pragma once

#include <cmath>
#include <string>

#include "display/canvas.h"
#include "display/panel_theme.h"
#include "display/text_raster.h"

namespace hullrider {

struct Brush {
    Canvas& canvas;
    TextCache& texts;
    const PanelTheme& theme;
};

// An element's place in the window. Painters use design units from its top left; `extraY` centers unstretched content
// in a stretched box.
struct Frame {
    Frame(const PanelScale& panelScale, const Box& box);

    float X(float units) const { return static_cast<float>(box.x) + units * scale; }
    float Y(float units) const { return static_cast<float>(box.y) + extraY + units * scale; }
    float RightX(float units) const { return static_cast<float>(box.x + box.width) - units * scale; }
    float WidthUnits() const { return static_cast<float>(box.width) / scale; }
    float HeightUnits() const { return static_cast<float>(box.height) / scale; }
    int32_t Px(float units) const { return static_cast<int32_t>(std::lround(units * scale)); }

    // A coverage of the box's size.
    Coverage NewCoverage() const { return {box.width, box.height}; }

    PixelBox box;
    float scale;  // pixels per design unit
    float extraY;
};

enum class Align : uint8_t { kLeft, kCenter, kRight };

struct TextLook {
    TextStyle style;
    Rgb color;
    float alpha = 1.0F;
    float glow = 0.0F;  // the strength of the light around the letters
};

TextLook TitleLook(const Frame& frame, float sizeUnits, Rgb color, float glow);
TextLook LabelLook(const Frame& frame, float sizeUnits, Rgb color, float alpha = 1.0F);

// Paints a line of UTF-8 text and returns its width. `x` is its left end, middle or right end; all in pixels.
int32_t PaintText(Brush& brush, const std::string& text, const TextLook& look, float x, float baseline,
                  Align align = Align::kLeft);

}  // namespace hullrider
