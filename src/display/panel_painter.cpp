#include "display/panel_painter.h"

#include "display/controls.h"
#include "display/faceplate.h"

namespace hullrider {

ElementSet ElementsToRepaint(const PanelLook& before, const PanelLook& after) {
    ElementSet elements = ElementsThatDiffer(before.model, after.model);
    elements |= before.enabled ^ after.enabled;
    const auto noteChange = [&](const std::optional<PanelElement>& from, const std::optional<PanelElement>& to) {
        if (from == to) return;
        if (from) elements.set(IndexOf(*from));
        if (to) elements.set(IndexOf(*to));
    };
    noteChange(before.hover, after.hover);
    noteChange(before.pressed, after.pressed);
    if (before.meter != after.meter) elements.set(IndexOf(PanelElement::kMeter));
    return elements;
}

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
        PaintElement(brush, element, look);
    }
}

ElementSet PanelPainter::MovedLines(const PanelModel& model, LineMotion from, LineMotion to) {
    ElementSet lines;
    if (!canvas_ || from.shownSec == to.shownSec) return lines;
    Brush brush{*canvas_, texts_, theme_};
    const Frame album(scale_, BoxOf(PanelElement::kAlbum)), title(scale_, BoxOf(PanelElement::kTitle));
    lines.set(IndexOf(PanelElement::kAlbum),
              AlbumOffset(brush, album, model, from) != AlbumOffset(brush, album, model, to));
    lines.set(IndexOf(PanelElement::kTitle),
              TitleOffset(brush, title, model, from) != TitleOffset(brush, title, model, to));
    return lines;
}

void PanelPainter::PaintElement(Brush& brush, PanelElement element, const PanelLook& look) {
    const Frame frame(scale_, BoxOf(element));
    const PanelModel& model = look.model;
    const ControlState state{look.enabled.test(IndexOf(element)), look.hover == element, look.pressed == element};
    switch (element) {
        case PanelElement::kVolume:
            return PaintVolume(brush, frame, model, state);
        case PanelElement::kSongBar:
            return PaintSongBar(brush, frame, model);
        case PanelElement::kKind:
            return PaintKind(brush, frame, model);
        case PanelElement::kAlbum:
            return PaintAlbum(brush, frame, model, look.motion);
        case PanelElement::kStatus:
            return PaintStatus(brush, frame, model);
        case PanelElement::kTitle:
            return PaintTitle(brush, frame, model, look.motion);
        case PanelElement::kClock:
            return PaintClock(brush, frame, model);
        case PanelElement::kSoundFont:
            return PaintSoundFont(brush, frame, model);
        case PanelElement::kPlaylist:
            return PaintPlaylist(brush, frame, model);
        case PanelElement::kFavorite:
            return PaintFavorite(brush, frame, model);
        case PanelElement::kWindowLeft:
            return PaintWindowLeft(brush, frame, model);
        case PanelElement::kMeter:
            return PaintMeter(brush, frame, look.meter);
        case PanelElement::kModes:
            return PaintModes(brush, frame, model);
        case PanelElement::kSongPosition:
            return PaintSongPosition(brush, frame, model);
        case PanelElement::kSongLeft:
            return PaintSongLeft(brush, frame, model);
        default:
            return PaintKey(brush, frame, element, model, state);
    }
}

}  // namespace hullrider
