// A bar that shows the shares of a whole, and the colors of the kinds of music in such charts. UI thread.
#pragma once

#include <windows.h>

#include <span>

namespace hullrider {

inline constexpr COLORREF kMidiColor = RGB(66, 133, 190), kAudioFileColor = RGB(226, 156, 60),
                          kTrackerColor = RGB(110, 168, 98), kFavoriteColor = RGB(200, 86, 96),
                          kStationColor = RGB(136, 106, 176);

struct BarPart {
    double share = 0.0;  // 0 to 1, of the bar's width
    COLORREF color = 0;
};

// From left to right; the rest stays empty.
void PaintShareBar(HDC dc, const RECT& box, std::span<const BarPart> parts);

void FillWith(HDC dc, const RECT& box, COLORREF color);

}  // namespace hullrider
