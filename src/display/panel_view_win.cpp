#include "display/panel_view_win.h"

#include <algorithm>
#include <string>

#include "display/gdiplus_win.h"
#include "platform/text_win.h"
#include "state/shell_state.h"

namespace hullrider {

namespace {

using Gdiplus::Color;
using Gdiplus::Graphics;
using Gdiplus::RectF;
using Gdiplus::SolidBrush;

// The panel's own space is kPanelWidth x kPanelHeight; everything below is in it.
const RectF kFrame{6.0F, 6.0F, kPanelWidth - 12.0F, kPanelHeight - 12.0F};
constexpr float kCorner = 7.0F;
constexpr float kMargin = 24.0F;
constexpr float kTextWidth = kPanelWidth - 2.0F * kMargin;
constexpr float kBarTop = 118.0F;
constexpr float kBarHeight = 3.0F;

Color ColorOf(int32_t red, int32_t green, int32_t blue, BYTE alpha = 255) {
    const auto byte = [](int32_t value) { return static_cast<BYTE>(std::clamp(value, 0, 255)); };
    return {alpha, byte(red), byte(green), byte(blue)};
}

// A font family that is installed, the first choice first; GDI+ draws nothing at all in one that is not.
std::unique_ptr<Gdiplus::FontFamily> ChooseFontFamily() {
    for (const wchar_t* name : {L"Segoe UI", L"Tahoma", L"DejaVu Sans", L"Arial"}) {
        auto family = std::make_unique<Gdiplus::FontFamily>(name);
        if (family->IsAvailable()) return family;
    }
    return std::unique_ptr<Gdiplus::FontFamily>(Gdiplus::FontFamily::GenericSansSerif()->Clone());
}

void AddRoundedRectangle(Gdiplus::GraphicsPath& path, const RectF& box, float radius) {
    const float diameter = 2.0F * radius;
    path.AddArc(box.X, box.Y, diameter, diameter, 180.0F, 90.0F);
    path.AddArc(box.GetRight() - diameter, box.Y, diameter, diameter, 270.0F, 90.0F);
    path.AddArc(box.GetRight() - diameter, box.GetBottom() - diameter, diameter, diameter, 0.0F, 90.0F);
    path.AddArc(box.X, box.GetBottom() - diameter, diameter, diameter, 90.0F, 90.0F);
    path.CloseFigure();
}

class PanelPainter {
public:
    PanelPainter(Graphics& graphics, const Gdiplus::FontFamily& family, const Settings& settings)
        : graphics_(graphics),
          family_(family),
          textColor_(ColorOf(settings.textR, settings.textG, settings.textB)),
          backColor_(ColorOf(settings.bkGrR, settings.bkGrG, settings.bkGrB)),
          songColor_(ColorOf(settings.songR, settings.songG, settings.songB)) {}

    void Draw(const PanelText& text) {
        DrawFrame();
        DrawLine(text.album, 22.0F, 11.0F, textColor_, Gdiplus::StringAlignmentNear);
        DrawLine(text.title, 44.0F, text.playing ? 24.0F : 17.0F, songColor_, Gdiplus::StringAlignmentNear);
        if (text.time.empty()) return;
        DrawLine(text.time, 94.0F, 13.0F, textColor_, Gdiplus::StringAlignmentFar);
        DrawWindowBar(text);
    }

private:
    void DrawFrame() {
        graphics_.Clear(Darker(backColor_, 2));
        Gdiplus::GraphicsPath glass;
        AddRoundedRectangle(glass, kFrame, kCorner);
        Gdiplus::LinearGradientBrush fill(kFrame, backColor_, Darker(backColor_, 3),
                                          Gdiplus::LinearGradientModeVertical);
        graphics_.FillPath(&fill, &glass);
        const Gdiplus::Pen edge(WithAlpha(textColor_, 60), 1.0F);
        graphics_.DrawPath(&edge, &glass);
    }

    void DrawLine(const std::string& line, float top, float size, Color color, Gdiplus::StringAlignment alignment) {
        if (line.empty()) return;
        const std::wstring wide = WideFromUtf8(line);
        const Gdiplus::Font font(&family_, size, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
        // The plain format leaves a margin that grows with the font; this one begins where it is told.
        Gdiplus::StringFormat format(Gdiplus::StringFormat::GenericTypographic());
        format.SetFormatFlags(Gdiplus::StringFormatFlagsNoWrap);
        format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
        format.SetAlignment(alignment);
        const SolidBrush brush(color);
        graphics_.DrawString(wide.c_str(), static_cast<INT>(wide.size()), &font,
                             RectF(kMargin, top, kTextWidth, size * 1.6F), &format, &brush);
    }

    // The song as a line, the part of it that is played as a bright stretch, and a mark where it is now.
    void DrawWindowBar(const PanelText& text) {
        const auto at = [](double fraction) { return kMargin + kTextWidth * static_cast<float>(fraction); };
        const SolidBrush song(WithAlpha(textColor_, 50));
        const SolidBrush window(WithAlpha(songColor_, 150));
        const SolidBrush mark(textColor_);
        graphics_.FillRectangle(&song, kMargin, kBarTop, kTextWidth, kBarHeight);
        graphics_.FillRectangle(&window, at(text.windowFrom), kBarTop, at(text.windowTo) - at(text.windowFrom),
                                kBarHeight);
        graphics_.FillRectangle(&mark, at(text.position) - 1.0F, kBarTop - 4.0F, 2.0F, kBarHeight + 8.0F);
    }

    static Color Darker(Color color, int divisor) {
        return ColorOf(color.GetR() / divisor, color.GetG() / divisor, color.GetB() / divisor);
    }
    static Color WithAlpha(Color color, BYTE alpha) { return {alpha, color.GetR(), color.GetG(), color.GetB()}; }

    Graphics& graphics_;
    const Gdiplus::FontFamily& family_;
    Color textColor_, backColor_, songColor_;
};

}  // namespace

struct PanelView::Buffer {
    Buffer(LONG width, LONG height) : bitmap(width, height, PixelFormat32bppPARGB), family(ChooseFontFamily()) {}

    bool Fits(LONG width, LONG height) {
        return bitmap.GetWidth() == static_cast<UINT>(width) && bitmap.GetHeight() == static_cast<UINT>(height);
    }

    Gdiplus::Bitmap bitmap;
    std::unique_ptr<Gdiplus::FontFamily> family;
};

PanelView::PanelView() = default;
PanelView::~PanelView() = default;

void PanelView::ReleaseBuffer() {
    buffer_.reset();
}

void PanelView::Show(HWND window, const PanelText& text) {
    if (text == text_) return;
    text_ = text;
    InvalidateRect(window, nullptr, FALSE);
}

void PanelView::Paint(HWND window, const Settings& settings) {
    PAINTSTRUCT paint;
    const HDC target = BeginPaint(window, &paint);
    RECT client;
    GetClientRect(window, &client);
    if (client.right > 0 && client.bottom > 0) {
        if (!buffer_ || !buffer_->Fits(client.right, client.bottom)) {
            buffer_ = std::make_unique<Buffer>(client.right, client.bottom);
        }
        Graphics offScreen(&buffer_->bitmap);
        offScreen.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
        offScreen.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAliasGridFit);
        offScreen.ScaleTransform(static_cast<float>(client.right) / kPanelWidth,
                                 static_cast<float>(client.bottom) / kPanelHeight);
        PanelPainter(offScreen, *buffer_->family, settings).Draw(text_);
        Graphics(target).DrawImage(&buffer_->bitmap, 0, 0, client.right, client.bottom);
    }
    EndPaint(window, &paint);
}

}  // namespace hullrider
