// A bitmap with accessible pixels: 0x00RRGGBB, rows from the top, initially black.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdint>

namespace hullrider {

class Surface {
public:
    Surface(int32_t width, int32_t height) : width_(std::max(width, 1)), height_(std::max(height, 1)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width_;
        info.bmiHeader.biHeight = -height_;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        info.bmiHeader.biCompression = BI_RGB;
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        pixels_ = static_cast<uint32_t*>(bits);
    }
    ~Surface() { DeleteObject(bitmap_); }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    HBITMAP Bitmap() const { return bitmap_; }
    uint32_t* Pixels() const { return pixels_; }  // null when out of memory
    int32_t Width() const { return width_; }
    int32_t Height() const { return height_; }

private:
    int32_t width_, height_;
    HBITMAP bitmap_ = nullptr;
    uint32_t* pixels_ = nullptr;
};

}  // namespace hullrider
