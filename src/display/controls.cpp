#include "display/controls.h"

namespace hullrider {

namespace {

constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kWhite{255, 255, 255};

void PaintRounded(Brush& brush, const Frame& frame, const Box& box, float corner, const Shade& shade) {
    Coverage coverage = frame.NewCoverage();
    coverage.Add(frame.scale, box, [&](Point p) { return DistanceToBox(p, box, corner); });
    brush.canvas.Paint(coverage, frame.box.x, frame.box.y, shade);
}

Box Inset(const Box& box, float by) {
    return {box.x + by, box.y + by, box.width - 2.0F * by, box.height - 2.0F * by};
}

void PaintCap(Brush& brush, const Frame& frame, ControlState state) {
    const PanelTheme& theme = brush.theme;
    const Box all{0.0F, 0.0F, frame.WidthUnits(), frame.HeightUnits()};
    PaintRounded(brush, frame, all, 4.4F,
                 {Mix(theme.metalShade, kBlack, 0.5F), Mix(theme.metalLight, theme.metalShade, 0.5F)});
    Rgb top = theme.keyTop, bottom = theme.keyBottom;
    if (state.hover) top = Mix(top, kWhite, 0.14F), bottom = Mix(bottom, kWhite, 0.09F);
    if (state.pressed) std::swap(top, bottom);
    const Box cap = Inset(all, 1.1F);
    PaintRounded(brush, frame, cap, 3.4F, {Mix(top, kWhite, state.pressed ? 0.02F : 0.22F), bottom});
    const Box face{cap.x + 0.5F, cap.y + 0.8F, cap.width - 1.0F, cap.height - 1.3F};
    PaintRounded(brush, frame, face, 3.0F, {top, bottom});
}

void PaintLamp(Brush& brush, const Frame& frame, bool lit, bool enabled) {
    constexpr float kWidth = 9.0F, kHeight = 1.7F, kTop = 3.6F;
    const Box lamp{frame.WidthUnits() / 2.0F - kWidth / 2.0F, kTop, kWidth, kHeight};
    Coverage coverage = frame.NewCoverage();
    coverage.Add(frame.scale, lamp, [&](Point p) { return DistanceToBox(p, lamp, kHeight / 2.0F); });
    const float strength = enabled ? 1.0F : 0.6F;
    if (lit) {
        Coverage glow = coverage;
        glow.Blur(std::max(frame.Px(1.1F), 1));
        brush.canvas.Paint(glow, frame.box.x, frame.box.y, {brush.theme.song, 0.9F * strength});
        brush.canvas.Paint(coverage, frame.box.x, frame.box.y, {Mix(brush.theme.song, kWhite, 0.25F), strength});
    } else {
        brush.canvas.Paint(coverage, frame.box.x, frame.box.y, {kBlack, 0.55F});
    }
}

// The reflection of turned metal: two bright sectors opposite each other.
void PaintTurnedMetal(Brush& brush, const Frame& frame, Point center, float radius) {
    Coverage light = frame.NewCoverage();
    const Box within{center.x - radius, center.y - radius, 2.0F * radius, 2.0F * radius};
    light.Add(frame.scale, within, [&](Point p) { return DistanceToCircle(p, center, radius); });
    for (int32_t y = 0; y < light.Height(); ++y) {
        for (int32_t x = 0; x < light.Width(); ++x) {
            if (light.At(x, y) == 0) continue;
            const float angle = std::atan2(static_cast<float>(y) / frame.scale - center.y,
                                           static_cast<float>(x) / frame.scale - center.x);
            const float wave = std::cos(2.0F * angle - 2.4F);
            const float share = wave > 0.0F ? wave * wave : 0.0F;
            light.Set(x, y, static_cast<uint8_t>(static_cast<float>(light.At(x, y)) * share));
        }
    }
    brush.canvas.Paint(light, frame.box.x, frame.box.y, {Mix(brush.theme.keyTop, kWhite, 0.55F), 0.42F});
}

constexpr float kSweepFrom = -2.3561945F;  // 225 degrees and its mirror: 0 and full volume
constexpr float kSweepTo = 2.3561945F;
constexpr float kKnobRadius = 25.0F;

void PaintDisc(Brush& brush, const Frame& frame, Point center, float radius, const Shade& shade, int32_t blurPx = 0) {
    Coverage coverage = frame.NewCoverage();
    const Box within{center.x - radius, center.y - radius, 2.0F * radius, 2.0F * radius};
    coverage.Add(frame.scale, within, [&](Point p) { return DistanceToCircle(p, center, radius); });
    coverage.Blur(blurPx);
    brush.canvas.Paint(coverage, frame.box.x, frame.box.y, shade);
}

// The ring of lights around the knob, lit up to the volume.
void PaintVolumeRing(Brush& brush, const Frame& frame, Point center, float volume, float strength) {
    constexpr int kLights = 31;
    constexpr float kFrom = 29.6F, kTo = 33.8F, kWidth = 1.5F;
    Coverage lit = frame.NewCoverage(), dark = frame.NewCoverage();
    const int count = static_cast<int>(std::lround(volume * static_cast<float>(kLights)));
    for (int i = 0; i < kLights; ++i) {
        const float angle =
            kSweepFrom + (kSweepTo - kSweepFrom) * static_cast<float>(i) / static_cast<float>(kLights - 1);
        const Point from = OnCircle(center, kFrom, angle), to = OnCircle(center, kTo, angle);
        const Box within{std::min(from.x, to.x) - kWidth, std::min(from.y, to.y) - kWidth,
                         std::abs(to.x - from.x) + 2.0F * kWidth, std::abs(to.y - from.y) + 2.0F * kWidth};
        (i < count ? lit : dark).Add(frame.scale, within, [&](Point p) {
            return DistanceToStroke(p, from, to, kWidth);
        });
    }
    brush.canvas.Paint(dark, frame.box.x, frame.box.y, {kBlack, 0.5F});
    Coverage glow = lit;
    glow.Blur(std::max(frame.Px(1.3F), 1));
    brush.canvas.Paint(glow, frame.box.x, frame.box.y, {brush.theme.song, 0.8F * strength});
    brush.canvas.Paint(lit, frame.box.x, frame.box.y, {Mix(brush.theme.song, kWhite, 0.15F), strength});
}

void PaintKnob(Brush& brush, const Frame& frame, Point center, ControlState state) {
    const PanelTheme& theme = brush.theme;
    PaintDisc(brush, frame, {center.x, center.y + 2.2F}, kKnobRadius, {kBlack, 0.6F}, std::max(frame.Px(1.8F), 1));
    PaintDisc(brush, frame, center, kKnobRadius, {Mix(theme.metalShade, kBlack, 0.4F)});
    PaintDisc(brush, frame, center, kKnobRadius - 0.7F, {Mix(theme.keyTop, kWhite, 0.30F), theme.keyBottom});
    PaintDisc(brush, frame, center, kKnobRadius - 3.6F, {theme.keyBottom, Mix(theme.keyTop, kWhite, 0.18F)});
    const float lift = state.pressed ? 0.16F : state.hover ? 0.09F : 0.0F;
    PaintDisc(brush, frame, center, kKnobRadius - 4.6F,
              {Mix(theme.keyTop, kWhite, 0.06F + lift), Mix(theme.keyBottom, kWhite, lift)});
    PaintTurnedMetal(brush, frame, center, kKnobRadius - 4.6F);
}

}  // namespace

void PaintKey(Brush& brush, const Frame& frame, const KeyFace& face, ControlState state) {
    PaintCap(brush, frame, state);
    if (face.isLit) PaintLamp(brush, frame, *face.isLit, state.enabled);
    Point center{frame.WidthUnits() / 2.0F, frame.HeightUnits() / 2.0F};
    if (face.isLit) center.y += 2.2F;
    if (state.pressed) center.y += 0.7F;
    Coverage icon = frame.NewCoverage();
    AddIcon(icon, frame.scale, face.icon, center);
    const PanelTheme& theme = brush.theme;
    const Rgb color = state.hover || state.pressed ? Mix(theme.keyIcon, theme.song, 0.75F) : theme.keyIcon;
    if (state.enabled) {
        brush.canvas.Paint(icon, frame.box.x, frame.box.y + std::max(frame.Px(0.5F), 1), {kBlack, 0.5F});
    }
    brush.canvas.Paint(icon, frame.box.x, frame.box.y, {color, state.enabled ? 1.0F : 0.28F});
}

void PaintFocus(Brush& brush, const Frame& frame, bool isRound) {
    constexpr float kHalfWidth = 0.6F, kInset = 1.2F, kCorner = 3.6F;
    const Box ring = Inset({0.0F, 0.0F, frame.WidthUnits(), frame.HeightUnits()}, kInset);
    const float corner = isRound ? std::min(ring.width, ring.height) / 2.0F : kCorner;
    Coverage coverage = frame.NewCoverage();
    const Box all{0.0F, 0.0F, frame.WidthUnits(), frame.HeightUnits()};
    coverage.Add(frame.scale, all, [&](Point p) { return std::abs(DistanceToBox(p, ring, corner)) - kHalfWidth; });
    brush.canvas.Paint(coverage, frame.box.x, frame.box.y, {brush.theme.song});
}

void PaintVolume(Brush& brush, const Frame& frame, const PanelModel& model, ControlState state) {
    const Point center{frame.WidthUnits() / 2.0F, frame.HeightUnits() / 2.0F};
    const float strength = model.isMuted ? 0.35F : state.enabled ? 1.0F : 0.45F;
    PaintVolumeRing(brush, frame, center, model.volume, strength);
    PaintKnob(brush, frame, center, state);
    const float angle = kSweepFrom + (kSweepTo - kSweepFrom) * model.volume;
    const Point from = OnCircle(center, kKnobRadius - 12.0F, angle), to = OnCircle(center, kKnobRadius - 6.4F, angle);
    Coverage pointer = frame.NewCoverage();
    const Box all{0.0F, 0.0F, frame.WidthUnits(), frame.HeightUnits()};
    pointer.Add(frame.scale, all, [&](Point p) { return DistanceToStroke(p, from, to, 2.2F); });
    Coverage glow = pointer;
    glow.Blur(std::max(frame.Px(1.2F), 1));
    brush.canvas.Paint(glow, frame.box.x, frame.box.y, {brush.theme.song, 0.7F * strength});
    brush.canvas.Paint(pointer, frame.box.x, frame.box.y, {brush.theme.song, strength});
}

}  // namespace hullrider
