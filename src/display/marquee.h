// Scrolls a line of text that is longer than its box: it rests, runs through once, and rests again. Pure.
#pragma once

#include <cstdint>

namespace hullrider {

struct MarqueeLine {
    int32_t textPx = 0;
    int32_t boxPx = 0;
    int32_t gapPx = 0;  // between the end of the text and its next beginning
    double pxPerSec = 1.0;

    bool Scrolls() const { return textPx > boxPx; }
};

// How far the text is scrolled to the left `shownSec` seconds after it was first shown: 0 to below textPx + gapPx.
int32_t MarqueeOffset(const MarqueeLine& line, double shownSec);

}  // namespace hullrider
