#include "display/coverage.h"

namespace hullrider {

namespace {

// The running mean of `count` values that lie `step` apart, 2 * radius + 1 wide.
void BoxBlur(uint8_t* values, int32_t count, size_t step, int32_t radius, std::vector<uint8_t>& copy) {
    copy.resize(count);
    for (int32_t i = 0; i < count; ++i) copy[i] = values[i * step];
    const int32_t window = 2 * radius + 1;
    int32_t sum = 0;
    for (int32_t i = 0; i < std::min(radius, count); ++i) sum += copy[i];
    for (int32_t i = 0; i < count; ++i) {
        if (i + radius < count) sum += copy[i + radius];
        if (i - radius - 1 >= 0) sum -= copy[i - radius - 1];
        values[i * step] = static_cast<uint8_t>(sum / window);
    }
}

}  // namespace

Coverage::Coverage(int32_t width, int32_t height)
    : width_(std::max(width, 0)), height_(std::max(height, 0)), values_(static_cast<size_t>(width_) * height_) {}

void Coverage::Blur(int32_t radiusPx) {
    constexpr int kPasses = 2;  // two boxes make a triangle, close enough to a Gaussian for a glow
    if (radiusPx < 1 || values_.empty()) return;
    std::vector<uint8_t> copy;
    for (int pass = 0; pass < kPasses; ++pass) {
        for (int32_t y = 0; y < height_; ++y)
            BoxBlur(&values_[static_cast<size_t>(y) * width_], width_, 1, radiusPx, copy);
        for (int32_t x = 0; x < width_; ++x) BoxBlur(&values_[x], height_, width_, radiusPx, copy);
    }
}

}  // namespace hullrider
