#include "display/panel_theme.h"

#include <algorithm>
#include <cmath>

namespace hullrider {

namespace {

constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kAluminium{168, 174, 182};
constexpr Rgb kRed{255, 78, 58};

uint8_t Byte(int32_t value) {
    return static_cast<uint8_t>(std::clamp(value, 0, 255));
}

// Relative luminance as the contrast ratio defines it.
double LuminanceOf(Rgb color) {
    const auto linear = [](uint8_t value) {
        const double share = value / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
}

// The color mixed into the background, by at least that share and so much that it can be seen: the standard asks for a
// contrast of 3 for what controls consist of. The glass has reflections, hence a little more.
Rgb Visible(Rgb back, Rgb color, float leastShare) {
    constexpr double kLeastContrast = 3.4;
    for (float share = leastShare; share <= 1.0F; share += 0.02F) {
        const Rgb mixed = Mix(back, color, share);
        if (ContrastOf(mixed, back) >= kLeastContrast) return mixed;
    }
    const Rgb opposite = ContrastOf(kWhite, back) > ContrastOf(kBlack, back) ? kWhite : kBlack;
    return Mix(color, opposite, 0.7F);
}

}  // namespace

Rgb Mix(Rgb from, Rgb to, float share) {
    const auto mix = [share](uint8_t a, uint8_t b) {
        return static_cast<uint8_t>(std::lround(static_cast<float>(a) + static_cast<float>(b - a) * share));
    };
    return {mix(from.r, to.r), mix(from.g, to.g), mix(from.b, to.b)};
}

double ContrastOf(Rgb a, Rgb b) {
    const auto [dark, light] = std::minmax({LuminanceOf(a), LuminanceOf(b)});
    return (light + 0.05) / (dark + 0.05);
}

PanelTheme MakePanelTheme(const Settings& settings) {
    const Rgb text{Byte(settings.textR), Byte(settings.textG), Byte(settings.textB)};
    const Rgb back{Byte(settings.bkGrR), Byte(settings.bkGrG), Byte(settings.bkGrB)};
    const Rgb song{Byte(settings.songR), Byte(settings.songG), Byte(settings.songB)};
    PanelTheme theme;
    theme.metalTop = Mix(back, kAluminium, 0.40F);
    theme.metalBottom = Mix(back, kAluminium, 0.20F);
    theme.metalLight = Mix(theme.metalTop, kWhite, 0.35F);
    theme.metalShade = Mix(back, kBlack, 0.6F);
    theme.engraving = Mix(theme.metalTop, text, 0.72F);
    theme.keyTop = Mix(back, kAluminium, 0.30F);
    theme.keyBottom = Mix(back, kAluminium, 0.11F);
    theme.keyIcon = text;
    theme.glassTop = Mix(back, kBlack, 0.35F);
    theme.glassBottom = Mix(back, song, 0.035F);
    theme.text = text;
    theme.song = song;
    theme.songLine = Visible(theme.glassBottom, text, 0.28F);
    theme.songWindow = Visible(theme.glassBottom, song, 0.42F);
    theme.songPlayed = Visible(theme.glassBottom, song, 1.0F);
    theme.meterLow = Mix(text, Rgb{90, 170, 255}, 0.25F);
    theme.meterMiddle = song;
    theme.meterHigh = kRed;
    theme.lamp = kRed;
    return theme;
}

}  // namespace hullrider
