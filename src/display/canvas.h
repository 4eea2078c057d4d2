// Pixels to paint on, and the two ways to paint: through a coverage, and as a plain box.
#pragma once

#include <cstdint>

#include "display/coverage.h"
#include "display/panel_layout.h"
#include "display/panel_theme.h"

namespace hullrider {

// A vertical gradient over what is painted.
struct Shade {
    Shade(Rgb color, float opacity = 1.0F) : top(color), bottom(color), alpha(opacity) {}
    Shade(Rgb topColor, Rgb bottomColor, float opacity = 1.0F) : top(topColor), bottom(bottomColor), alpha(opacity) {}

    Rgb top, bottom;
    float alpha;  // 0 to 1
};

// Borrowed pixels, 0x00RRGGBB, rows from the top. Nothing is painted outside the clip.
class Canvas {
public:
    Canvas(uint32_t* pixels, int32_t width, int32_t height)
        : pixels_(pixels), width_(width), height_(height), clip_{0, 0, width, height} {}

    int32_t Width() const { return width_; }
    int32_t Height() const { return height_; }
    uint32_t& At(int32_t x, int32_t y) { return pixels_[static_cast<size_t>(y) * width_ + x]; }

    // `box` is cut to the canvas. Painting fades out over the given number of pixels at the clip's left and right ends.
    void Clip(const PixelBox& box, int32_t fadeLeftPx = 0, int32_t fadeRightPx = 0);
    void ClipNothing() { Clip({0, 0, width_, height_}); }

    void Paint(const Coverage& coverage, int32_t x, int32_t y, const Shade& shade);
    void PaintBox(const PixelBox& box, const Shade& shade);

    // Copies the pixels in `box` from another canvas of this size.
    void CopyFrom(const Canvas& other, const PixelBox& box);

private:
    int32_t FadeAt(int32_t x) const;
    void Blend(uint32_t& pixel, uint32_t color, int32_t alpha);

    uint32_t* pixels_;
    int32_t width_, height_;
    PixelBox clip_;
    int32_t fadeLeftPx_ = 0, fadeRightPx_ = 0;
};

}  // namespace hullrider
