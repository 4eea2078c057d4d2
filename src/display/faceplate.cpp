#include "display/faceplate.h"

#include <array>

#include "display/panel_elements.h"

namespace hullrider {

namespace {

constexpr int32_t kSmallestCaptionPx = 8;  // smaller letters look like dirt

// Brush marks: noise stretched along the row.
class BrushMarks {
public:
    float Next() {
        state_ ^= state_ << 13U;
        state_ ^= state_ >> 17U;
        state_ ^= state_ << 5U;
        const float noise = static_cast<float>(state_ & 0xFFFFU) / 32768.0F - 1.0F;
        drawn_ += (noise - drawn_) * 0.06F;
        return drawn_;
    }
    // The brightness of a whole row relative to its neighbors.
    float NextRow() {
        for (int i = 0; i < 3; ++i) Next();
        return drawn_;
    }

private:
    uint32_t state_ = 0x9E3779B9U;
    float drawn_ = 0.0F;
};

void PaintMetal(Canvas& canvas, const PanelTheme& theme) {
    constexpr float kStrength = 0.22F;
    BrushMarks marks;
    for (int32_t y = 0; y < canvas.Height(); ++y) {
        const float down = static_cast<float>(y) / static_cast<float>(std::max(canvas.Height() - 1, 1));
        const Rgb color = Mix(theme.metalTop, theme.metalBottom, down);
        const float row = marks.NextRow();
        for (int32_t x = 0; x < canvas.Width(); ++x) {
            const float factor = 1.0F + kStrength * (marks.Next() + 0.5F * row);
            const auto part = [factor](uint8_t value) {
                return static_cast<uint32_t>(std::clamp(static_cast<float>(value) * factor, 0.0F, 255.0F));
            };
            canvas.At(x, y) = part(color.r) << 16U | part(color.g) << 8U | part(color.b);
        }
    }
    const int32_t edge = std::max(canvas.Height() / 155, 1);
    canvas.PaintBox({0, 0, canvas.Width(), edge}, {theme.metalLight, 0.55F});
    canvas.PaintBox({0, canvas.Height() - edge, canvas.Width(), edge}, {theme.metalShade, 0.8F});
}

Box Grown(const Box& box, float by) {
    return {box.x - by, box.y - by, box.width + 2.0F * by, box.height + 2.0F * by};
}

// A box with round corners around the display, `by` units larger than it.
void PaintAround(Brush& brush, const PanelScale& scale, float by, float corner, const Shade& shade) {
    const Frame frame(scale, Grown(kLcdBox, by));
    Coverage coverage = frame.NewCoverage();
    const Box all{0.0F, 0.0F, frame.WidthUnits(), frame.HeightUnits()};
    coverage.Add(frame.scale, all, [&](Point p) { return DistanceToBox(p, all, corner); });
    brush.canvas.Paint(coverage, frame.box.x, frame.box.y, shade);
}

// The frame's own shadow falls on the upper edge of the glass.
void PaintGlassShadow(Brush& brush, const Frame& frame) {
    constexpr float kDepth = 5.0F;
    const int32_t rows = frame.Px(kDepth);
    for (int32_t row = 0; row < rows; ++row) {
        const float share = 1.0F - static_cast<float>(row) / static_cast<float>(rows);
        brush.canvas.PaintBox(
            {frame.box.x + frame.Px(2.0F), frame.box.y + row, frame.box.width - 2 * frame.Px(2.0F), 1},
            {Rgb{0, 0, 0}, 0.45F * share * share});
    }
}

// A reflection across the glass.
void PaintReflection(Brush& brush, const Frame& frame) {
    Coverage coverage = frame.NewCoverage();
    const float width = frame.WidthUnits(), height = frame.HeightUnits();
    const std::array<Point, 4> band{
        {{width * 0.52F, 0.0F}, {width * 0.80F, 0.0F}, {width * 0.66F, height}, {width * 0.38F, height}}};
    coverage.Add(frame.scale, {0.0F, 0.0F, width, height}, [&](Point p) { return DistanceToPolygon(p, band); });
    brush.canvas.Paint(coverage, frame.box.x, frame.box.y, {Rgb{255, 255, 255}, 0.018F});
}

void PaintDisplay(Brush& brush, const PanelScale& scale) {
    const PanelTheme& theme = brush.theme;
    PaintAround(brush, scale, 4.5F, 8.5F, {theme.metalShade, theme.metalLight, 0.35F});
    PaintAround(brush, scale, 3.6F, 7.6F, {Mix(theme.metalShade, Rgb{0, 0, 0}, 0.5F), theme.metalShade});
    PaintAround(brush, scale, 0.0F, 4.5F, {theme.glassTop, theme.glassBottom});
    const Frame glass(scale, kLcdBox);
    PaintGlassShadow(brush, glass);
    PaintReflection(brush, glass);
}

// Cut into the metal: a dark letter with light on its lower edge.
void Engrave(Brush& brush, const std::string& text, const TextLook& look, float x, float baseline) {
    const float offset = std::max(1.0F, static_cast<float>(look.style.sizePx) / 14.0F);
    TextLook below = look;
    below.color = Rgb{0, 0, 0};
    below.alpha = 0.55F;
    PaintText(brush, text, below, x, baseline - offset, Align::kCenter);
    PaintText(brush, text, look, x, baseline, Align::kCenter);
}

struct Caption {
    const char* text;
    PanelElement first, last;  // it is centered below these
};

constexpr std::array<Caption, 6> kCaptions{{
    {"SONG", PanelElement::kPrevious, PanelElement::kNext},
    {"PLAYLIST", PanelElement::kPlaylistBack, PanelElement::kPlaylistForward},
    {"SHUFFLE", PanelElement::kShuffle, PanelElement::kShuffle},
    {"FILTER", PanelElement::kFilter, PanelElement::kFilter},
    {"FAVORITE", PanelElement::kFavoriteDown, PanelElement::kFavoriteUp},
    {"EXIT", PanelElement::kExit, PanelElement::kExit},
}};

void PaintCaptions(Brush& brush, const PanelScale& scale) {
    constexpr float kSize = 5.4F, kBaseline = 9.0F;
    for (const Caption& caption : kCaptions) {
        const Box first = BoxOf(caption.first), last = BoxOf(caption.last);
        const Box under{first.x, first.y + first.height, last.x + last.width - first.x, 12.0F};
        const Frame frame(scale, under);
        const TextLook look = LabelLook(frame, kSize, brush.theme.engraving);
        if (look.style.sizePx < kSmallestCaptionPx) continue;
        Engrave(brush, caption.text, look, frame.X(frame.WidthUnits() / 2.0F), frame.Y(kBaseline));
    }
    const Box knob = BoxOf(PanelElement::kVolume);
    const Frame frame(scale, {knob.x, knob.y + knob.height, knob.width, 14.0F});
    const TextLook look = LabelLook(frame, kSize, brush.theme.engraving);
    if (look.style.sizePx < kSmallestCaptionPx) return;
    Engrave(brush, "VOLUME", look, frame.X(frame.WidthUnits() / 2.0F), frame.Y(3.5F));
}

void PaintWordmark(Brush& brush, const PanelScale& scale) {
    const Frame frame(scale, kWordmarkBox);
    const float middle = frame.X(frame.WidthUnits() / 2.0F);
    TextLook name = LabelLook(frame, 9.2F, brush.theme.engraving);
    name.style.spacingPx = frame.Px(1.0F);
    Engrave(brush, "HULLRIDER", name, middle, frame.Y(12.5F));
    TextLook kind = LabelLook(frame, 5.6F, brush.theme.song);
    kind.style.spacingPx = frame.Px(3.6F);
    if (kind.style.sizePx < kSmallestCaptionPx) return;
    Engrave(brush, "RADIO", kind, middle, frame.Y(21.0F));
}

}  // namespace

void PaintFaceplate(Brush& brush, const PanelScale& scale) {
    brush.canvas.ClipNothing();
    PaintMetal(brush.canvas, brush.theme);
    PaintDisplay(brush, scale);
    PaintCaptions(brush, scale);
    PaintWordmark(brush, scale);
}

}  // namespace hullrider
