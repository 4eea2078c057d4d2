#include "display/segment_digits.h"

#include <array>

namespace hullrider {

namespace {

constexpr float kDigitWidth = 11.0F;
constexpr float kDigitAdvance = 14.4F;
constexpr float kColonAdvance = 6.4F;
constexpr float kStroke = 2.3F;
constexpr float kGap = 0.28F;    // between the ends of two segments
constexpr float kSlant = 0.09F;  // to the right, for each unit of height
constexpr float kLean = kSegmentDigitHeight * kSlant;

// Bits: 0 top, 1 top right, 2 bottom right, 3 bottom, 4 bottom left, 5 top left, 6 middle.
constexpr std::array<uint8_t, 10> kDigitSegments{0x3F, 0x06, 0x5B, 0x4F, 0x66, 0x6D, 0x7D, 0x07, 0x7F, 0x6F};

struct SegmentLine {
    Point from, to;
};

// The middle line of each segment of an upright digit.
constexpr float kLeft = kStroke / 2.0F, kRight = kDigitWidth - kStroke / 2.0F;
constexpr float kTop = kStroke / 2.0F, kMiddle = kSegmentDigitHeight / 2.0F;
constexpr float kBottom = kSegmentDigitHeight - kStroke / 2.0F;
constexpr std::array<SegmentLine, 7> kSegmentLines{{
    {{kLeft, kTop}, {kRight, kTop}},
    {{kRight, kTop}, {kRight, kMiddle}},
    {{kRight, kMiddle}, {kRight, kBottom}},
    {{kLeft, kBottom}, {kRight, kBottom}},
    {{kLeft, kMiddle}, {kLeft, kBottom}},
    {{kLeft, kTop}, {kLeft, kMiddle}},
    {{kLeft, kMiddle}, {kRight, kMiddle}},
}};

// A bar with pointed ends, so that neighbors meet along a slanted gap.
std::array<Point, 6> CornersOf(const SegmentLine& line) {
    const float half = kStroke / 2.0F;
    if (line.from.y == line.to.y) {
        const float from = line.from.x + kGap, to = line.to.x - kGap, y = line.from.y;
        return {{{from, y},
                 {from + half, y - half},
                 {to - half, y - half},
                 {to, y},
                 {to - half, y + half},
                 {from + half, y + half}}};
    }
    const float from = line.from.y + kGap, to = line.to.y - kGap, x = line.from.x;
    return {{{x, from},
             {x + half, from + half},
             {x + half, to - half},
             {x, to},
             {x - half, to - half},
             {x - half, from + half}}};
}

Point Slanted(Point p, float x, float y) {
    return {x + p.x + (kSegmentDigitHeight - p.y) * kSlant, y + p.y};
}

void AddDigit(Coverage& coverage, float scale, uint8_t segments, float x, float y) {
    for (size_t i = 0; i < kSegmentLines.size(); ++i) {
        if ((segments >> i & 1U) == 0) continue;
        std::array<Point, 6> corners = CornersOf(kSegmentLines[i]);
        Box within{x + kDigitWidth + kLean, y + kSegmentDigitHeight, 0.0F, 0.0F};
        Point end{x, y};
        for (Point& corner : corners) {
            corner = Slanted(corner, x, y);
            within.x = std::min(within.x, corner.x);
            within.y = std::min(within.y, corner.y);
            end = {std::max(end.x, corner.x), std::max(end.y, corner.y)};
        }
        within.width = end.x - within.x;
        within.height = end.y - within.y;
        coverage.Add(scale, within, [&](Point p) { return DistanceToPolygon(p, corners); });
    }
}

void AddColon(Coverage& coverage, float scale, float x, float y) {
    constexpr float kDot = 1.35F;
    for (const float at : {0.3F, 0.7F}) {
        const Point center = Slanted({kDot + 0.4F, kSegmentDigitHeight * at}, x, y);
        const Box within{center.x - kDot, center.y - kDot, 2.0F * kDot, 2.0F * kDot};
        coverage.Add(scale, within, [&](Point p) { return DistanceToCircle(p, center, kDot); });
    }
}

}  // namespace

float SegmentTextWidth(std::string_view text) {
    float width = kDigitWidth - kDigitAdvance + kLean;
    for (const char c : text) width += c == ':' ? kColonAdvance : kDigitAdvance;
    return width;
}

void AddSegmentText(Coverage& coverage, float scale, std::string_view text, float x, float y) {
    for (const char c : text) {
        if (c >= '0' && c <= '9') AddDigit(coverage, scale, kDigitSegments[c - '0'], x, y);
        if (c == ':') AddColon(coverage, scale, x, y);
        x += c == ':' ? kColonAdvance : kDigitAdvance;
    }
}

}  // namespace hullrider
