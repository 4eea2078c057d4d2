#include "dialogs/share_bar_win.h"

#include <cmath>

namespace hullrider {

void PaintShareBar(HDC dc, const RECT& box, std::span<const BarPart> parts) {
    FillRect(dc, &box, GetSysColorBrush(COLOR_WINDOW));
    const double width = box.right - box.left;
    double begin = 0.0;
    for (const BarPart& part : parts) {
        const double end = begin + part.share;
        const RECT filled{box.left + static_cast<LONG>(std::lround(begin * width)), box.top,
                          box.left + static_cast<LONG>(std::lround(end * width)), box.bottom};
        FillWith(dc, filled, part.color);
        begin = end;
    }
    FrameRect(dc, &box, GetSysColorBrush(COLOR_BTNSHADOW));
}

void FillWith(HDC dc, const RECT& box, COLORREF color) {
    SetDCBrushColor(dc, color);
    FillRect(dc, &box, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

}  // namespace hullrider
