#include "display/panel_layout.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "state/shell_state.h"

namespace hullrider {

namespace {

constexpr float kMostStretch = 1.35F;

constexpr float kKeysTop = 115.0F;
constexpr float kKeysHeight = 23.0F;

constexpr Box Key(float x, float width) {
    return {x, kKeysTop, width, kKeysHeight};
}

constexpr std::array<Box, kElementCount> kBoxes{{
    Key(10.5F, 32.0F),               // previous
    Key(46.5F, 37.0F),               // play, pause
    Key(87.5F, 31.0F),               // next
    Key(132.0F, 26.0F),              // playlist back
    Key(162.0F, 26.0F),              // playlist forward
    Key(202.0F, 26.0F),              // shuffle
    Key(232.0F, 26.0F),              // filter
    Key(272.0F, 26.0F),              // favorite down
    Key(302.0F, 26.0F),              // favorite up
    Key(438.0F, 28.0F),              // exit
    {414.0F, 17.0F, 76.0F, 76.0F},   // volume
    {68.0F, 87.0F, 286.0F, 13.0F},   // song bar
    {24.0F, 17.0F, 46.0F, 12.0F},    // kind
    {76.0F, 16.0F, 206.0F, 14.0F},   // album
    {290.0F, 16.0F, 106.0F, 14.0F},  // status
    {20.0F, 30.0F, 264.0F, 28.0F},   // title
    {288.0F, 30.0F, 110.0F, 28.0F},  // clock
    {138.0F, 59.0F, 146.0F, 11.0F},  // SoundFont
    {24.0F, 59.0F, 66.0F, 11.0F},    // playlist
    {92.0F, 59.0F, 44.0F, 11.0F},    // favorite
    {290.0F, 59.0F, 106.0F, 11.0F},  // window left
    {24.0F, 72.5F, 260.0F, 12.0F},   // meter
    {290.0F, 72.5F, 106.0F, 12.0F},  // modes
    {24.0F, 88.0F, 42.0F, 11.0F},    // song position
    {354.0F, 88.0F, 42.0F, 11.0F},   // song left
}};

constexpr float kTrackInset = 3.0F;  // room for the mark at either end

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

Box BoxOf(PanelElement element) {
    return kBoxes[IndexOf(element)];
}

Box SongTrack() {
    const Box box = BoxOf(PanelElement::kSongBar);
    return {box.x + kTrackInset, box.y, box.width - 2.0F * kTrackInset, box.height};
}

std::optional<PanelElement> ElementAt(DesignPoint place) {
    for (size_t i = 0; i < kClickableCount; ++i) {
        const Box& box = kBoxes[i];
        if (!box.Contains(place.x, place.y)) continue;
        const auto element = static_cast<PanelElement>(i);
        if (element == PanelElement::kVolume) {
            const float radius = box.width / 2.0F;
            if (std::hypot(place.x - box.x - radius, place.y - box.y - radius) > radius) return std::nullopt;
        }
        return element;
    }
    return std::nullopt;
}

}  // namespace hullrider
