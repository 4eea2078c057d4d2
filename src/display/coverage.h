// How much of each pixel a shape covers: the mask that colors are painted through. Shapes and text are rasterized at
// their final size and never scaled. (GDI+ does not antialias everywhere: under Wine it draws steps.)
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "display/shapes.h"

namespace hullrider {

class Coverage {
public:
    Coverage() = default;
    Coverage(int32_t width, int32_t height);

    int32_t Width() const { return width_; }
    int32_t Height() const { return height_; }
    uint8_t At(int32_t x, int32_t y) const { return values_[static_cast<size_t>(y) * width_ + x]; }
    const uint8_t* Row(int32_t y) const { return values_.data() + static_cast<size_t>(y) * width_; }
    void Set(int32_t x, int32_t y, uint8_t value) { values_[static_cast<size_t>(y) * width_ + x] = value; }

    // Adds a shape. `distance` gives the signed distance of a point. Points and `within` are in design units from the
    // coverage's top left, `scale` is pixels per unit. Only pixels in `within` are visited.
    template <class Distance>
    void Add(float scale, const Box& within, Distance distance) {
        Visit(scale, within, distance, [](uint8_t& value, uint8_t shape) { value = std::max(value, shape); });
    }
    // Removes a shape.
    template <class Distance>
    void Cut(float scale, const Box& within, Distance distance) {
        Visit(scale, within, distance,
              [](uint8_t& value, uint8_t shape) { value = std::min(value, static_cast<uint8_t>(255 - shape)); });
    }

    // What spreads beyond the edge is lost.
    void Blur(int32_t radiusPx);

private:
    template <class Distance, class Merge>
    void Visit(float scale, const Box& within, Distance distance, Merge merge) {
        const auto bound = [scale](float units, int32_t most) {
            return std::clamp(static_cast<int32_t>(std::lround(units * scale)), 0, most);
        };
        const int32_t right = bound(within.x + within.width + 1.0F, width_);
        const int32_t bottom = bound(within.y + within.height + 1.0F, height_);
        for (int32_t y = bound(within.y - 1.0F, height_); y < bottom; ++y) {
            for (int32_t x = bound(within.x - 1.0F, width_); x < right; ++x) {
                const Point p{(static_cast<float>(x) + 0.5F) / scale, (static_cast<float>(y) + 0.5F) / scale};
                const float covered = std::clamp(0.5F - distance(p) * scale, 0.0F, 1.0F);
                merge(values_[static_cast<size_t>(y) * width_ + x], static_cast<uint8_t>(covered * 255.0F + 0.5F));
            }
        }
    }

    int32_t width_ = 0, height_ = 0;
    std::vector<uint8_t> values_;
};

}  // namespace hullrider
