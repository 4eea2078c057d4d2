// Text through GDI, which substitutes fonts for scripts that its own font lacks. UI thread.
#pragma once

#include <windows.h>

#include "display/text_raster.h"

namespace hullrider {

class GdiTextRasterizer : public TextRasterizer {
public:
    GdiTextRasterizer();
    ~GdiTextRasterizer() override;
    GdiTextRasterizer(const GdiTextRasterizer&) = delete;
    GdiTextRasterizer& operator=(const GdiTextRasterizer&) = delete;

    TextMask Draw(const std::string& text, const TextStyle& style, int32_t marginPx) override;

private:
    HDC dc_;
    std::wstring titleFont_, labelFont_;
};

}  // namespace hullrider
