#include "display/text_raster.h"

namespace hullrider {

const TextMask& TextCache::Get(const std::string& text, const TextStyle& style) {
    constexpr size_t kMostMasks = 48;  // a panel shows about twenty at once; the times change every second
    const std::tuple key{text, style};
    const auto found = masks_.find(key);
    if (found != masks_.end()) return found->second;
    if (masks_.size() >= kMostMasks) masks_.clear();
    const int32_t radius = std::max(style.sizePx / 7, 1);
    TextMask mask = rasterizer_.Draw(text, style, 2 * radius);
    mask.glow = mask.ink;
    mask.glow.Blur(radius);
    return masks_.emplace(key, std::move(mask)).first->second;
}

}  // namespace hullrider
