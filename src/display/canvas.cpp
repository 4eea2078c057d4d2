#include "display/canvas.h"

#include <algorithm>

namespace hullrider {

namespace {

PixelBox Intersect(const PixelBox& a, const PixelBox& b) {
    const int32_t left = std::max(a.x, b.x);
    const int32_t top = std::max(a.y, b.y);
    const int32_t right = std::min(a.x + a.width, b.x + b.width);
    const int32_t bottom = std::min(a.y + a.height, b.y + b.height);
    return {left, top, std::max(right - left, 0), std::max(bottom - top, 0)};
}

uint32_t Packed(Rgb color) {
    return static_cast<uint32_t>(color.r) << 16U | static_cast<uint32_t>(color.g) << 8U | color.b;
}

// The shade's color in row `row` of `rows`.
uint32_t ColorInRow(const Shade& shade, int32_t row, int32_t rows) {
    if (shade.top == shade.bottom || rows < 2) return Packed(shade.top);
    return Packed(Mix(shade.top, shade.bottom, static_cast<float>(row) / static_cast<float>(rows - 1)));
}

}  // namespace

void Canvas::Clip(const PixelBox& box, int32_t fadeLeftPx, int32_t fadeRightPx) {
    clip_ = Intersect(box, {0, 0, width_, height_});
    fadeLeftPx_ = fadeLeftPx;
    fadeRightPx_ = fadeRightPx;
}

int32_t Canvas::FadeAt(int32_t x) const {
    const int32_t fromLeft = x - clip_.x;
    const int32_t fromRight = clip_.x + clip_.width - 1 - x;
    if (fromLeft >= fadeLeftPx_ && fromRight >= fadeRightPx_) return 256;
    int32_t fade = 256;
    if (fromLeft < fadeLeftPx_) fade = 256 * fromLeft / fadeLeftPx_;
    if (fromRight < fadeRightPx_) fade = std::min(fade, 256 * fromRight / fadeRightPx_);
    return fade;
}

// `alpha` is 0 to 256. Red and blue are mixed in one multiplication: their products do not overlap.
void Canvas::Blend(uint32_t& pixel, uint32_t color, int32_t alpha) {
    const uint32_t share = static_cast<uint32_t>(alpha);
    const uint32_t rest = 256U - share;
    const uint32_t redBlue = ((pixel & 0xFF00FFU) * rest + (color & 0xFF00FFU) * share) >> 8U & 0xFF00FFU;
    const uint32_t green = ((pixel & 0x00FF00U) * rest + (color & 0x00FF00U) * share) >> 8U & 0x00FF00U;
    pixel = redBlue | green;
}

void Canvas::Paint(const Coverage& coverage, int32_t x, int32_t y, const Shade& shade) {
    const PixelBox box = Intersect(clip_, {x, y, coverage.Width(), coverage.Height()});
    const auto opacity = static_cast<int32_t>(std::lround(std::clamp(shade.alpha, 0.0F, 1.0F) * 257.0F));
    if (box.width == 0) return;
    for (int32_t row = box.y; row < box.y + box.height; ++row) {
        const uint32_t color = ColorInRow(shade, row - y, coverage.Height());
        const uint8_t* const covered = coverage.Row(row - y);
        uint32_t* const pixels = pixels_ + static_cast<size_t>(row) * width_;
        for (int32_t column = box.x; column < box.x + box.width; ++column) {
            const int32_t share = covered[column - x];
            if (share == 0) continue;
            const int32_t alpha = std::min((share * opacity + 128) >> 8, 256);
            Blend(pixels[column], color, alpha * FadeAt(column) >> 8);
        }
    }
}

void Canvas::PaintBox(const PixelBox& box, const Shade& shade) {
    const PixelBox inside = Intersect(clip_, box);
    const auto alpha = static_cast<int32_t>(std::lround(std::clamp(shade.alpha, 0.0F, 1.0F) * 256.0F));
    for (int32_t row = inside.y; row < inside.y + inside.height; ++row) {
        const uint32_t color = ColorInRow(shade, row - box.y, box.height);
        for (int32_t column = inside.x; column < inside.x + inside.width; ++column)
            Blend(At(column, row), color, alpha);
    }
}

void Canvas::CopyFrom(const Canvas& other, const PixelBox& box) {
    const PixelBox inside = Intersect({0, 0, width_, height_}, box);
    for (int32_t row = inside.y; row < inside.y + inside.height; ++row) {
        const uint32_t* const from = other.pixels_ + static_cast<size_t>(row) * width_ + inside.x;
        std::copy_n(from, inside.width, &At(inside.x, row));
    }
}

}  // namespace hullrider
