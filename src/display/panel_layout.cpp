#include "display/panel_layout.h"

#include <algorithm>
#include <cmath>

#include "state/shell_state.h"

namespace hullrider {

namespace {

constexpr float kMostStretch = 1.35F;

}  // namespace

PixelBox PanelScale::ToPixels(const Box& box) const {
    const auto round = [](float value) { return static_cast<int32_t>(std::lround(value)); };
    const int32_t left = round(originX + box.x * x);
    const int32_t top = round(originY + box.y * y);
    return {left, top, round(originX + (box.x + box.width) * x) - left,
            round(originY + (box.y + box.height) * y) - top};
}

DesignPoint PanelScale::ToDesign(int32_t px, int32_t py) const {
    return {(static_cast<float>(px) + 0.5F - originX) / x, (static_cast<float>(py) + 0.5F - originY) / y};
}

PanelScale FitPanel(int32_t widthPx, int32_t heightPx) {
    const float width = static_cast<float>(std::max(widthPx, 1));
    const float height = static_cast<float>(std::max(heightPx, 1));
    PanelScale scale;
    scale.x = std::min(width / kPanelWidth, height / kPanelHeight * kMostStretch);
    scale.y = std::min(height / kPanelHeight, width / kPanelWidth * kMostStretch);
    scale.glyph = std::min(scale.x, scale.y);
    scale.originX = (width - kPanelWidth * scale.x) / 2.0F;
    scale.originY = (height - kPanelHeight * scale.y) / 2.0F;
    return scale;
}

}  // namespace hullrider
