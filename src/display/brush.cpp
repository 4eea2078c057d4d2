#include "display/brush.h"

namespace hullrider {

Frame::Frame(const PanelScale& panelScale, const Box& designBox)
    : box(panelScale.ToPixels(designBox)),
      scale(panelScale.glyph),
      extraY((static_cast<float>(box.height) - designBox.height * scale) / 2.0F) {}

TextLook TitleLook(const Frame& frame, float sizeUnits, Rgb color, float glow) {
    return {{TextFace::kTitle, std::max(frame.Px(sizeUnits), 1), 0}, color, 1.0F, glow};
}

TextLook LabelLook(const Frame& frame, float sizeUnits, Rgb color, float alpha) {
    constexpr float kSpacing = 0.06F;  // of the size: capitals need wider spacing
    const int32_t spacingPx = std::max(static_cast<int32_t>(std::lround(sizeUnits * frame.scale * kSpacing)), 1);
    return {{TextFace::kLabel, std::max(frame.Px(sizeUnits), 1), spacingPx}, color, alpha, 0.0F};
}

int32_t PaintText(Brush& brush, const std::string& text, const TextLook& look, float x, float baseline, Align align) {
    constexpr int32_t kSmallestLabelPx = 5;  // smaller capitals are illegible
    if (text.empty() || (look.style.face == TextFace::kLabel && look.style.sizePx < kSmallestLabelPx)) return 0;
    const TextMask& mask = brush.texts.Get(text, look.style);
    float left = x;
    if (align == Align::kCenter) left -= static_cast<float>(mask.widthPx) / 2.0F;
    if (align == Align::kRight) left -= static_cast<float>(mask.widthPx);
    const int32_t maskX = static_cast<int32_t>(std::lround(left)) - mask.marginPx;
    const int32_t maskY = static_cast<int32_t>(std::lround(baseline)) - mask.baseline;
    constexpr int32_t kSmallestGlowPx = 9;  // on smaller letters it is only a blur
    if (look.glow > 0.0F && look.style.sizePx >= kSmallestGlowPx)
        brush.canvas.Paint(mask.glow, maskX, maskY, {look.color, look.glow});
    brush.canvas.Paint(mask.ink, maskX, maskY, {look.color, look.alpha});
    return mask.widthPx;
}

}  // namespace hullrider
