#include "display/lcd.h"

#include "display/icons.h"
#include "display/marquee.h"
#include "display/segment_digits.h"
#include "playback/stream_time.h"

namespace hullrider {

namespace {

constexpr float kGhost = 0.09F;  // opacity of an unlit sign
constexpr float kDim = 0.55F;    // of a value's name
constexpr float kGlow = 0.55F;

constexpr float kTitleSize = 21.0F;
constexpr float kHintSize = 11.6F;  // of a hint shown in place of a title
constexpr float kAlbumSize = 11.0F;
constexpr float kLabelSize = 6.4F;
constexpr float kValueSize = 8.6F;
constexpr float kValueBaseline = 8.6F;

TextLook AlbumLook(const Frame& frame, const PanelTheme& theme) {
    return TitleLook(frame, kAlbumSize, theme.text, 0.25F);
}

TextLook LookOfTitle(const Frame& frame, const PanelTheme& theme, const PanelModel& model) {
    if (model.transport == Transport::kStopped) {
        return TitleLook(frame, kTitleSize, Mix(theme.glassBottom, theme.song, kDim), 0.0F);
    }
    return TitleLook(frame, IsOn(model) ? kTitleSize : kHintSize, theme.song, kGlow);
}

MarqueeLine LineOf(const Frame& frame, const TextMask& mask, float insetUnits) {
    MarqueeLine line;
    line.textPx = mask.widthPx;
    line.boxPx = frame.box.width - 2 * frame.Px(insetUnits);
    line.gapPx = 3 * mask.baseline / 2;
    line.pxPerSec = 22.0 * static_cast<double>(frame.scale);
    return line;
}

int32_t OffsetOf(Brush& brush, const Frame& frame, const std::string& text, const TextLook& look, float insetUnits,
                 LineMotion motion) {
    if (text.empty()) return 0;
    return MarqueeOffset(LineOf(frame, brush.texts.Get(text, look.style), insetUnits), motion.shownSec);
}

// A name that may be longer than its box. The inset leaves room for the glow.
void PaintName(Brush& brush, const Frame& frame, const std::string& text, const TextLook& look, float baseline,
               float insetUnits, LineMotion motion) {
    if (text.empty()) return;
    const MarqueeLine line = LineOf(frame, brush.texts.Get(text, look.style), insetUnits);
    const int32_t offset = MarqueeOffset(line, motion.shownSec);
    if (line.Scrolls()) brush.canvas.Clip(frame.box, offset > 0 ? frame.Px(9.0F) : 0, frame.Px(14.0F));
    const float x = frame.X(insetUnits) - static_cast<float>(offset);
    PaintText(brush, text, look, x, frame.Y(baseline));
    if (line.Scrolls()) {
        PaintText(brush, text, look, x + static_cast<float>(line.textPx + line.gapPx), frame.Y(baseline));
    }
}

constexpr float kTitleInset = 4.0F;

// "NAME value", the name dim.
void PaintNamedValue(Brush& brush, const Frame& frame, const char* name, const std::string& value) {
    if (value.empty()) return;
    const int32_t width = PaintText(brush, name, LabelLook(frame, kLabelSize, brush.theme.text, kDim), frame.X(0.0F),
                                    frame.Y(kValueBaseline));
    const TextLook look = TitleLook(frame, kValueSize, brush.theme.text, 0.2F);
    const float x = frame.X(4.5F) + static_cast<float>(width);
    brush.canvas.Clip(frame.box, 0, frame.Px(6.0F));
    PaintText(brush, value, look, x, frame.Y(kValueBaseline));
}

// An annunciator, as on a tuner, lit or unlit.
void PaintSign(Brush& brush, const Frame& frame, const char* text, bool lit, Rgb color, float x, Align align) {
    TextLook look = LabelLook(frame, kLabelSize, lit ? color : brush.theme.text, lit ? 1.0F : kGhost);
    look.glow = lit ? 0.6F : 0.0F;
    PaintText(brush, text, look, x, frame.Y(8.8F), align);
}

}  // namespace

std::string UpperLine(const PanelLook& look) {
    const bool isAsked = look.model.isNextSoon || look.hover == PanelElement::kNext;
    return isAsked && !look.model.next.empty() ? "NEXT: " + look.model.next : look.model.album;
}

int32_t UpperLineOffset(Brush& brush, const Frame& frame, const PanelLook& look, LineMotion motion) {
    return OffsetOf(brush, frame, UpperLine(look), AlbumLook(frame, brush.theme), 0.0F, motion);
}

int32_t TitleOffset(Brush& brush, const Frame& frame, const PanelModel& model, LineMotion motion) {
    return OffsetOf(brush, frame, model.title, LookOfTitle(frame, brush.theme, model), kTitleInset, motion);
}

void PaintKind(Brush& brush, const Frame& frame, const PanelModel& model) {
    if (model.kind.empty()) return;
    Coverage plate = frame.NewCoverage();
    const Box all{0.0F, 0.0F, frame.WidthUnits(), frame.HeightUnits()};
    plate.Add(frame.scale, all, [&](Point p) { return DistanceToBox(p, all, 2.2F); });
    brush.canvas.Paint(plate, frame.box.x, frame.box.y, {brush.theme.song, 0.92F});
    PaintText(brush, model.kind, LabelLook(frame, 7.4F, brush.theme.glassTop), frame.X(frame.WidthUnits() / 2.0F),
              frame.Y(8.7F), Align::kCenter);
}

void PaintUpperLine(Brush& brush, const Frame& frame, const PanelLook& look) {
    PaintName(brush, frame, UpperLine(look), AlbumLook(frame, brush.theme), 10.8F, 0.0F, look.motion);
}

void PaintTitle(Brush& brush, const Frame& frame, const PanelLook& look) {
    const PanelModel& model = look.model;
    PaintName(brush, frame, model.title, LookOfTitle(frame, brush.theme, model),
              model.transport == Transport::kNothing ? 18.0F : 21.5F, kTitleInset, look.motion);
}

void PaintStatus(Brush& brush, const Frame& frame, const PanelLook& look) {
    const PanelModel& model = look.model;
    const PanelTheme& theme = brush.theme;
    if (look.volumeIsNews) {
        const std::string volume = "VOLUME " + std::to_string(std::lround(model.volume * 100.0F)) + " %";
        return PaintSign(brush, frame, volume.c_str(), true, theme.song, frame.RightX(0.0F), Align::kRight);
    }
    const bool isStopped = model.transport == Transport::kStopped;
    const bool isPaused = model.transport == Transport::kPaused;
    PaintSign(brush, frame, "ON AIR", model.transport == Transport::kPlaying, theme.lamp, frame.RightX(0.0F),
              Align::kRight);
    PaintSign(brush, frame, isStopped ? "STOPPED" : "PAUSED", isStopped || isPaused, theme.song, frame.RightX(36.0F),
              Align::kRight);
    PaintSign(brush, frame, "MUTE", model.isMuted, theme.song, frame.X(0.0F), Align::kLeft);
}

void PaintClock(Brush& brush, const Frame& frame, const PanelModel& model) {
    constexpr float kRightInset = 2.0F;
    constexpr float kTop = 3.6F;
    const std::string text = model.timePlayed.empty() ? ":" : model.timePlayed;
    std::string ghost;
    for (const char c : text.size() < 5 ? std::string("00:00") : text) ghost += c == ':' ? ':' : '8';
    const float right = frame.WidthUnits() - kRightInset;
    const auto draw = [&](const std::string& digits) {
        Coverage coverage = frame.NewCoverage();
        AddSegmentText(coverage, frame.scale, digits, right - SegmentTextWidth(digits),
                       kTop + frame.extraY / frame.scale);
        return coverage;
    };
    brush.canvas.Paint(draw(ghost), frame.box.x, frame.box.y, {brush.theme.song, 0.06F});
    if (!IsOn(model)) return;
    const Coverage lit = draw(text);
    Coverage glow = lit;
    glow.Blur(std::max(frame.Px(1.6F), 1));
    brush.canvas.Paint(glow, frame.box.x, frame.box.y, {brush.theme.song, kGlow});
    brush.canvas.Paint(lit, frame.box.x, frame.box.y, {brush.theme.song});
}

void PaintSoundFont(Brush& brush, const Frame& frame, const PanelModel& model) {
    PaintNamedValue(brush, frame, "SOUNDFONT", model.soundFont);
}

void PaintPlaylist(Brush& brush, const Frame& frame, const PanelModel& model) {
    PaintNamedValue(brush, frame, "LIST", model.playlist);
}

void PaintFavorite(Brush& brush, const Frame& frame, const PanelModel& model) {
    if (!IsOn(model)) return;
    const bool lit = model.favoriteCount > 0;
    Coverage star = frame.NewCoverage();
    constexpr float kIconScale = 0.78F;
    AddIcon(star, frame.scale * kIconScale, Icon::kStar,
            {5.4F / kIconScale, (5.3F + frame.extraY / frame.scale) / kIconScale});
    brush.canvas.Paint(star, frame.box.x, frame.box.y,
                       {lit ? brush.theme.song : brush.theme.text, lit ? 1.0F : 2.0F * kGhost});
    if (!lit) return;
    PaintText(brush, std::to_string(model.favoriteCount), TitleLook(frame, kValueSize, brush.theme.text, 0.2F),
              frame.X(12.5F), frame.Y(kValueBaseline));
}

void PaintTimeLeft(Brush& brush, const Frame& frame, const PanelModel& model) {
    if (model.timeLeft.empty()) return;
    const TextLook look = TitleLook(frame, kValueSize, brush.theme.text, 0.2F);
    PaintText(brush, model.timeLeft, look, frame.RightX(0.0F), frame.Y(kValueBaseline), Align::kRight);
    PaintText(brush, "NEXT IN", LabelLook(frame, kLabelSize, brush.theme.text, kDim), frame.RightX(42.0F),
              frame.Y(kValueBaseline), Align::kRight);
}

namespace {

// Shown in place of the modes when what plays breaks them.
const char* NoteOf(const PanelModel& model) {
    if (model.filterEffect == FilterEffect::kNothingPasses) {
        return model.filter == FavoriteFilter::kFavorites ? "NO FAVORITES" : "ONLY FAVORITES";
    }
    return model.relaxed == Relaxation::kCategory ? "ANY KIND" : nullptr;
}

const char* NameOf(PlayRange range) {
    switch (range) {
        case PlayRange::kPlaylist:
            return "LIST";
        case PlayRange::kStation:
            return "STATION";
        case PlayRange::kQueue:
            return "QUEUE";
        case PlayRange::kLibrary:
            break;
    }
    return "LIBRARY";
}

}  // namespace

void PaintModes(Brush& brush, const Frame& frame, const PanelModel& model) {
    const PanelTheme& theme = brush.theme;
    if (const char* const note = NoteOf(model); note != nullptr) {
        return PaintSign(brush, frame, note, true, theme.song, frame.X(0.0F), Align::kLeft);
    }
    PaintSign(brush, frame, "SHUFFLE", model.shuffle, theme.text, frame.X(0.0F), Align::kLeft);
    const bool others = model.filter == FavoriteFilter::kOthers;
    PaintSign(brush, frame, others ? "NO FAV" : "FAV", IsFiltered(model), theme.song, frame.X(53.0F), Align::kCenter);
}

// Where a click leads back to the library, it is framed like a key.
void PaintRange(Brush& brush, const Frame& frame, const PanelModel& model, ControlState state) {
    const PanelTheme& theme = brush.theme;
    if (state.enabled) {
        Coverage plate = frame.NewCoverage();
        const Box all{0.5F, frame.extraY / frame.scale + 0.6F, frame.WidthUnits() - 1.0F, 11.0F};
        plate.Add(frame.scale, all, [&](Point p) { return DistanceToBox(p, all, 2.2F); });
        const float strength = state.pressed ? 0.55F : state.hover ? 0.4F : 0.22F;
        brush.canvas.Paint(plate, frame.box.x, frame.box.y, {theme.song, strength});
    }
    const float x = state.enabled ? frame.X(frame.WidthUnits() / 2.0F) : frame.RightX(0.0F);
    PaintSign(brush, frame, NameOf(model.range), true, theme.text, x, state.enabled ? Align::kCenter : Align::kRight);
}

// Where the song is, or would be after a click.
void PaintSongPosition(Brush& brush, const Frame& frame, const PanelLook& look) {
    const PanelTheme& theme = brush.theme;
    const std::string time = look.pointed ? FormatTime(*look.pointed * look.model.lengthSec) : look.model.songPosition;
    PaintText(brush, time, TitleLook(frame, kValueSize, look.pointed ? theme.song : theme.text, 0.2F), frame.X(0.0F),
              frame.Y(kValueBaseline));
}

void PaintSongLeft(Brush& brush, const Frame& frame, const PanelModel& model) {
    PaintText(brush, model.songLeft, TitleLook(frame, kValueSize, brush.theme.text, 0.2F), frame.RightX(0.0F),
              frame.Y(kValueBaseline), Align::kRight);
}

}  // namespace hullrider
