#include "display/gauges.h"

#include "display/panel_elements.h"

namespace hullrider {

namespace {

constexpr float kMeterLeft = 9.0F;
constexpr int32_t kMiddleFrom = 24;  // segments of the louder colors
constexpr int32_t kHighFrom = 33;

Rgb SegmentColor(const PanelTheme& theme, int32_t segment) {
    if (segment >= kHighFrom) return theme.meterHigh;
    return segment >= kMiddleFrom ? theme.meterMiddle : theme.meterLow;
}

// Edges in whole pixels: a row of blurred ones would look dirty.
PixelBox SegmentBox(const Frame& frame, int32_t segment, float top, float height) {
    const float left = frame.X(kMeterLeft);
    const float step = (frame.RightX(0.0F) - left) / static_cast<float>(kMeterSegments);
    const auto edge = [&](int32_t i) { return static_cast<int32_t>(std::lround(left + step * static_cast<float>(i))); };
    const auto gap = std::max(static_cast<int32_t>(std::lround(step * 0.22F)), 1);
    return {edge(segment), static_cast<int32_t>(std::lround(frame.Y(top))), edge(segment + 1) - edge(segment) - gap,
            std::max(frame.Px(height), 1)};
}

void PaintMeterRow(Brush& brush, const Frame& frame, const char* name, const MeterBar& bar, float top) {
    constexpr float kHeight = 4.0F;
    PaintText(brush, name, LabelLook(frame, 5.4F, brush.theme.text, 0.55F), frame.X(0.0F), frame.Y(top + 3.95F));
    for (int32_t i = 0; i < kMeterSegments; ++i) {
        const bool lit = i < bar.lit || i + 1 == bar.peak;
        const Rgb color = SegmentColor(brush.theme, i);
        brush.canvas.PaintBox(SegmentBox(frame, i, top, kHeight), {color, lit ? 0.95F : 0.10F});
    }
}

struct Stretch {
    float from, to;  // design units from the frame's left
};

// Paints a bar with round ends across the middle of the frame, and its glow.
void PaintLine(Brush& brush, const Frame& frame, Stretch stretch, float height, const Shade& shade, float glow) {
    constexpr float kMargin = 4.0F;  // for the glow
    const float length = std::max(stretch.to - stretch.from, height);
    const int32_t left = frame.Px(stretch.from - kMargin);
    const int32_t top = (frame.box.height - frame.Px(height + 2.0F * kMargin)) / 2;
    Coverage line(frame.Px(length + 2.0F * kMargin), frame.Px(height + 2.0F * kMargin));
    const Box within{stretch.from - static_cast<float>(left) / frame.scale, kMargin, length, height};
    line.Add(frame.scale, within, [&](Point p) { return DistanceToBox(p, within, height / 2.0F); });
    if (glow > 0.0F) {
        Coverage light = line;
        light.Blur(std::max(frame.Px(1.2F), 1));
        brush.canvas.Paint(light, frame.box.x + left, frame.box.y + top, {shade.top, glow});
    }
    brush.canvas.Paint(line, frame.box.x + left, frame.box.y + top, shade);
}

// The marks at the current position and at the mouse.
void PaintMark(Brush& brush, const Frame& frame, float at, float width, float alpha) {
    const Box box{at - width / 2.0F, 1.5F, width, frame.HeightUnits() - 3.0F};
    Coverage coverage = frame.NewCoverage();
    coverage.Add(frame.scale, box, [&](Point p) { return DistanceToBox(p, box, width / 2.0F); });
    brush.canvas.Paint(coverage, frame.box.x, frame.box.y, {brush.theme.text, alpha});
}

}  // namespace

void PaintMeter(Brush& brush, const Frame& frame, const MeterBars& bars) {
    PaintMeterRow(brush, frame, "L", bars.left, 0.8F);
    PaintMeterRow(brush, frame, "R", bars.right, 6.8F);
}

// The song as a line, its play window as a bright stretch, and a mark at the current position. A mark that is dragged
// is where the mouse is.
void PaintSongBar(Brush& brush, const Frame& frame, const PanelLook& look) {
    constexpr float kSongHeight = 1.6F, kWindowHeight = 3.6F, kMarkWidth = 2.0F, kPointedWidth = 1.0F;
    const PanelTheme& theme = brush.theme;
    const PanelModel& model = look.model;
    const float inset = SongTrack().x - BoxOf(PanelElement::kSongBar).x;
    const float length = frame.WidthUnits() - 2.0F * inset;
    const auto at = [&](double fraction) { return inset + length * static_cast<float>(fraction); };
    PaintLine(brush, frame, {at(0.0), at(1.0)}, kSongHeight, {theme.songLine}, 0.0F);
    if (!IsOn(model)) return;
    const double now = std::clamp(model.position, model.windowFrom, std::max(model.windowFrom, model.windowTo));
    PaintLine(brush, frame, {at(model.windowFrom), at(model.windowTo)}, kWindowHeight, {theme.songWindow}, 0.0F);
    if (now > model.windowFrom) {
        PaintLine(brush, frame, {at(model.windowFrom), at(now)}, kWindowHeight, {theme.songPlayed}, 0.5F);
    }
    const bool isDragged = look.pressed == PanelElement::kSongBar && look.pointed;
    PaintMark(brush, frame, at(isDragged ? *look.pointed : model.position), kMarkWidth, 1.0F);
    if (look.pointed && !isDragged) PaintMark(brush, frame, at(*look.pointed), kPointedWidth, 0.7F);
}

}  // namespace hullrider
