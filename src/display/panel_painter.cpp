#include "display/panel_painter.h"

#include "display/faceplate.h"
#include "display/lcd.h"

namespace hullrider {

void PanelPainter::Begin(const Canvas& canvas, const PanelTheme& theme) {
    canvas_ = canvas;
    theme_ = theme;
    scale_ = FitPanel(canvas.Width(), canvas.Height());
    texts_.Clear();
    faceplate_.resize(static_cast<size_t>(canvas.Width()) * canvas.Height());
    Canvas bare(faceplate_.data(), canvas.Width(), canvas.Height());
    Brush brush{bare, texts_, theme_};
    PaintFaceplate(brush, scale_);
    canvas_->CopyFrom(bare, {0, 0, canvas.Width(), canvas.Height()});
}

void PanelPainter::Release() {
    canvas_.reset();
    texts_.Clear();
    faceplate_.clear();
    faceplate_.shrink_to_fit();
}

void PanelPainter::Paint(const ElementSet& elements, const PanelLook& look) {
    if (!canvas_) return;
    const Canvas bare(faceplate_.data(), canvas_->Width(), canvas_->Height());
    Brush brush{*canvas_, texts_, theme_};
    for (size_t i = 0; i < kElementCount; ++i) {
        if (!elements.test(i)) continue;
        const auto element = static_cast<PanelElement>(i);
        const PixelBox box = scale_.ToPixels(BoxOf(element));
        canvas_->CopyFrom(bare, box);
        canvas_->Clip(box);
        PaintElement(brush, scale_, element, look);
    }
}

ElementSet PanelPainter::MovedLines(const PanelLook& look, LineMotion from, LineMotion to) {
    ElementSet lines;
    if (!canvas_ || from.shownSec == to.shownSec) return lines;
    Brush brush{*canvas_, texts_, theme_};
    const Frame upper(scale_, BoxOf(PanelElement::kUpperLine)), title(scale_, BoxOf(PanelElement::kTitle));
    lines.set(IndexOf(PanelElement::kUpperLine),
              UpperLineOffset(brush, upper, look, from) != UpperLineOffset(brush, upper, look, to));
    lines.set(IndexOf(PanelElement::kTitle),
              TitleOffset(brush, title, look.model, from) != TitleOffset(brush, title, look.model, to));
    return lines;
}

}  // namespace hullrider
