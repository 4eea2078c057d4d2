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

}  // namespace

Rgb Mix(Rgb from, Rgb to, float share) {
    const auto mix = [share](uint8_t a, uint8_t b) {
        return static_cast<uint8_t>(std::lround(static_cast<float>(a) + static_cast<float>(b - a) * share));
    };
    return {mix(from.r, to.r), mix(from.g, to.g), mix(from.b, to.b)};
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
    theme.meterLow = Mix(text, Rgb{90, 170, 255}, 0.25F);
    theme.meterMiddle = song;
    theme.meterHigh = kRed;
    theme.lamp = kRed;
    return theme;
}

}  // namespace hullrider
