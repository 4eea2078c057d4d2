#include "display/text_raster_win.h"

#include <initializer_list>

#include "display/surface_win.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

// Wider than any panel; longer text is cut off.
constexpr LONG kWidestPx = 16000;

bool IsInstalled(HDC dc, const wchar_t* family) {
    LOGFONTW wanted{};
    wanted.lfCharSet = DEFAULT_CHARSET;
    lstrcpynW(wanted.lfFaceName, family, LF_FACESIZE);
    bool found = false;
    const auto note = [](const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM parameter) -> int {
        *reinterpret_cast<bool*>(parameter) = true;
        return 0;
    };
    EnumFontFamiliesExW(dc, &wanted, note, reinterpret_cast<LPARAM>(&found), 0);
    return found;
}

// The first installed family. Without any, the system chooses.
std::wstring ChooseFamily(HDC dc, std::initializer_list<const wchar_t*> families) {
    for (const wchar_t* family : families) {
        if (IsInstalled(dc, family)) return family;
    }
    return L"";
}

class SelectedFont {
public:
    SelectedFont(HDC dc, const std::wstring& family, const TextStyle& style) : dc_(dc) {
        constexpr int32_t kSmallestBoldPx = 9;  // below it the strokes run together
        const bool bold = style.face == TextFace::kLabel && style.sizePx >= kSmallestBoldPx;
        const int weight = bold ? FW_BOLD : FW_NORMAL;
        font_ = CreateFontW(-style.sizePx, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_TT_PRECIS,
                            CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH, family.c_str());
        old_ = SelectObject(dc_, font_);
        SetTextCharacterExtra(dc_, style.spacingPx);
    }
    ~SelectedFont() {
        SelectObject(dc_, old_);
        DeleteObject(font_);
    }
    SelectedFont(const SelectedFont&) = delete;
    SelectedFont& operator=(const SelectedFont&) = delete;

private:
    HDC dc_;
    HFONT font_;
    HGDIOBJ old_;
};

}  // namespace

GdiTextRasterizer::GdiTextRasterizer() : dc_(CreateCompatibleDC(nullptr)) {
    titleFont_ = ChooseFamily(dc_, {L"Segoe UI", L"DejaVu Sans Condensed", L"DejaVu Sans", L"Tahoma", L"Arial"});
    labelFont_ = ChooseFamily(dc_, {L"Bahnschrift", L"Segoe UI", L"DejaVu Sans Condensed", L"DejaVu Sans", L"Tahoma"});
}

GdiTextRasterizer::~GdiTextRasterizer() {
    DeleteDC(dc_);
}

TextMask GdiTextRasterizer::Draw(const std::string& text, const TextStyle& style, int32_t marginPx) {
    const std::wstring wide = WideFromUtf8(text);
    const auto length = static_cast<int>(wide.size());
    const SelectedFont font(dc_, style.face == TextFace::kLabel ? labelFont_ : titleFont_, style);
    SIZE size{};
    GetTextExtentPoint32W(dc_, wide.c_str(), length, &size);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc_, &metrics);
    // Leaves room for a last letter that overhangs its width, as in italics and some scripts.
    const LONG overhang = metrics.tmHeight / 4;
    size.cx = std::min(size.cx, kWidestPx);

    TextMask mask;
    mask.marginPx = marginPx;
    mask.widthPx = std::max<LONG>(size.cx - style.spacingPx, 0);
    mask.baseline = marginPx + metrics.tmAscent;
    mask.ink = Coverage(size.cx + overhang + 2 * marginPx, metrics.tmHeight + 2 * marginPx);
    Surface surface(mask.ink.Width(), mask.ink.Height());
    const HGDIOBJ oldBitmap = SelectObject(dc_, surface.Bitmap());
    SetBkMode(dc_, TRANSPARENT);
    SetTextColor(dc_, RGB(255, 255, 255));
    SetTextAlign(dc_, TA_BASELINE | TA_LEFT);
    ExtTextOutW(dc_, marginPx, mask.baseline, 0, nullptr, wide.c_str(), static_cast<UINT>(length), nullptr);
    GdiFlush();
    for (int32_t y = 0; y < mask.ink.Height(); ++y) {
        for (int32_t x = 0; x < mask.ink.Width(); ++x) {
            const uint32_t pixel = surface.Pixels()[static_cast<size_t>(y) * mask.ink.Width() + x];
            mask.ink.Set(x, y, static_cast<uint8_t>(pixel >> 8U & 0xFFU));
        }
    }
    SelectObject(dc_, oldBitmap);
    return mask;
}

}  // namespace hullrider
