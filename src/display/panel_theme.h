// The panel's colors. Everything that is painted takes its colors from here. Pure.
#pragma once

#include <cstdint>

#include "state/settings.h"

namespace hullrider {

struct Rgb {
    uint8_t r = 0, g = 0, b = 0;

    bool operator==(const Rgb&) const = default;
};

// `share` 0 gives `from`, 1 gives `to`.
Rgb Mix(Rgb from, Rgb to, float share);

struct PanelTheme {
    Rgb metalTop, metalBottom;   // the brushed faceplate
    Rgb metalLight, metalShade;  // its bevels
    Rgb engraving;               // captions on the metal
    Rgb keyTop, keyBottom;       // the keys' caps
    Rgb keyIcon;
    Rgb glassTop, glassBottom;  // the display
    Rgb text;
    Rgb song;                              // the title, the clock, and all that is lit
    Rgb songLine, songWindow, songPlayed;  // the song bar: the song, its play window, and what was played of that
    Rgb meterLow, meterMiddle, meterHigh;
    Rgb lamp;  // ON AIR

    bool operator==(const PanelTheme&) const = default;
};

// The contrast of two colors, 1 to 21, by WCAG 2.2 (https://www.w3.org/TR/WCAG22/#dfn-contrast-ratio).
double ContrastOf(Rgb a, Rgb b);

// The theme made from the user's three colors.
PanelTheme MakePanelTheme(const Settings& settings);

}  // namespace hullrider
