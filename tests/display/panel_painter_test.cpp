#include "display/panel_painter.h"

#include <gtest/gtest.h>

#include <functional>

namespace hullrider {
namespace {

// Stands in for the system's fonts: a bar a letter, whose height tells the letter.
class BarText : public TextRasterizer {
public:
    TextMask Draw(const std::string& text, const TextStyle& style, int32_t marginPx) override {
        const int32_t advance = style.sizePx / 2 + 1 + style.spacingPx;
        TextMask mask;
        mask.marginPx = marginPx;
        mask.widthPx = advance * static_cast<int32_t>(text.size());
        mask.baseline = marginPx + style.sizePx;
        mask.ink = Coverage(mask.widthPx + 2 * marginPx, style.sizePx * 5 / 4 + 2 * marginPx);
        for (size_t i = 0; i < text.size(); ++i) {
            const int32_t height = 1 + static_cast<unsigned char>(text[i]) * style.sizePx / 256;
            for (int32_t y = mask.baseline - height; y < mask.baseline; ++y) {
                for (int32_t x = 0; x < advance - 1; ++x) {
                    mask.ink.Set(marginPx + static_cast<int32_t>(i) * advance + x, y, 255);
                }
            }
        }
        return mask;
    }
};

class PanelPainterTest : public testing::Test {
protected:
    PanelPainterTest() {
        PanelModel& model = look_.model;
        model.transport = Transport::kPlaying;
        model.kind = "MIDI";
        model.album = "Album";
        model.title = "Title";
        model.timePlayed = "0:23";
        model.timeLeft = "0:42";
        model.songPosition = "1:05";
        model.songLeft = "-2:07";
        model.lengthSec = 192.0;
        model.windowFrom = 0.2;
        model.windowTo = 0.7;
        model.position = 0.4;
        model.soundFont = "Grand";
        model.playlist = "2/12";
        model.volume = 0.5F;
    }

    std::vector<uint32_t> PaintedWhole(int32_t width, int32_t height, const PanelLook& look) {
        std::vector<uint32_t> pixels(static_cast<size_t>(width) * height);
        PanelPainter painter(text_);
        painter.Begin({pixels.data(), width, height}, MakePanelTheme({}));
        painter.Paint(ElementSet().set(), look);
        return pixels;
    }

    BarText text_;
    PanelLook look_;
};

// One change each of everything that the picture depends on.
const std::vector<std::function<void(PanelLook&)>> kChanges{
    [](PanelLook& look) { look.model.transport = Transport::kPaused; },
    [](PanelLook& look) { look.model.kind = "TRACKER"; },
    [](PanelLook& look) { look.model.album = std::string(90, 'a'); },
    [](PanelLook& look) { look.model.title = std::string(150, 't'); },
    [](PanelLook& look) { look.motion.shownSec = 7.0; },
    [](PanelLook& look) { look.model.title = ""; },
    [](PanelLook& look) { look.model.timePlayed = "1:02:33"; },
    [](PanelLook& look) { look.model.timeLeft = "12:00:07"; },
    [](PanelLook& look) { look.model.songPosition = "10:01:05"; },
    [](PanelLook& look) { look.model.songLeft = ""; },
    [](PanelLook& look) { look.model.windowFrom = 0.1; },
    [](PanelLook& look) { look.model.windowTo = 0.9; },
    [](PanelLook& look) { look.model.position = 1.0; },
    [](PanelLook& look) { look.model.position = 0.02; },
    [](PanelLook& look) { look.model.position = 0.05; },  // before the turn only the mark tells
    [](PanelLook& look) { look.model.soundFont = std::string(60, 'f'); },
    [](PanelLook& look) { look.model.playlist = "1042/1999"; },
    [](PanelLook& look) { look.model.favoriteCount = 12; },
    [](PanelLook& look) { look.model.volume = 0.93F; },
    [](PanelLook& look) { look.volumeIsNews = true; },
    [](PanelLook& look) { look.model.volume = 0.5F; },
    [](PanelLook& look) { look.volumeIsNews = false; },
    [](PanelLook& look) { look.model.isMuted = true; },
    [](PanelLook& look) { look.pointed = 0.8; },
    [](PanelLook& look) { look.pressed = PanelElement::kSongBar; },
    [](PanelLook& look) { look.pointed = 0.9; },
    [](PanelLook& look) { look.pressed.reset(), look.pointed.reset(); },
    [](PanelLook& look) { look.model.shuffle = false; },
    [](PanelLook& look) { look.model.filter = FavoriteFilter::kOthers; },
    [](PanelLook& look) { look.model.filterEffect = FilterEffect::kNothingPasses; },
    [](PanelLook& look) { look.model.range = PlayRange::kStation; },
    [](PanelLook& look) { look.model.transport = Transport::kStopped; },
    [](PanelLook& look) { look.model.transport = Transport::kNothing; },
    [](PanelLook& look) { look.model.transport = Transport::kPlaying; },
    [](PanelLook& look) { look.focus = PanelElement::kVolume; },
    [](PanelLook& look) { look.focus = PanelElement::kSongBar; },
    [](PanelLook& look) { look.model.next = "Another", look.model.isNextSoon = true; },
    [](PanelLook& look) { look.model.isNextSoon = false; },
    [](PanelLook& look) { look.hover = PanelElement::kNext; },
    [](PanelLook& look) { look.pressed = PanelElement::kNext; },
    [](PanelLook& look) { look.hover = PanelElement::kVolume, look.pressed.reset(); },
    [](PanelLook& look) {
        look.meter.left = {20, 25};
    },
    [](PanelLook& look) { look.meter.right.peak = 36; },
};

TEST_F(PanelPainterTest, RepaintingWhatHasChangedGivesThePictureThatPaintingAllOfItGives) {
    for (const auto& [width, height] : {std::pair{500, 155}, {640, 300}}) {
        std::vector<uint32_t> pixels(static_cast<size_t>(width) * height);
        PanelPainter painter(text_);
        painter.Begin({pixels.data(), width, height}, MakePanelTheme({}));
        PanelLook shown = look_;
        painter.Paint(ElementSet().set(), shown);
        for (size_t i = 0; i < kChanges.size(); ++i) {
            PanelLook next = shown;
            kChanges[i](next);
            const ElementSet changed =
                ElementsToRepaint(shown, next) | painter.MovedLines(next, shown.motion, next.motion);
            const std::vector<uint32_t> before = pixels;
            painter.Paint(changed, next);
            EXPECT_TRUE(pixels == PaintedWhole(width, height, next)) << "change " << i << " at width " << width;
            EXPECT_TRUE(pixels != before) << "change " << i << " does not show";
            shown = next;
        }
    }
}

TEST_F(PanelPainterTest, ThePeakIsTheLastOfTheSegmentsThatItCounts) {
    look_.meter = {{20, 20}, {3, 3}};
    PanelLook without = look_;
    without.meter = {{20, 0}, {3, 0}};
    EXPECT_TRUE(PaintedWhole(500, 155, look_) == PaintedWhole(500, 155, without));
}

// On the glass around it, in any colors that a user may set. WCAG 2.2 asks for a contrast of 3.
TEST_F(PanelPainterTest, TheSongBarCanBeSeen) {
    constexpr int32_t kWidth = 1000, kHeight = 310;
    Settings dark, light, same, blue;
    light.bkGrR = light.bkGrG = light.bkGrB = 235;
    light.textR = light.textG = light.textB = 30;
    same.textR = same.textG = same.textB = same.songR = same.songG = same.songB = 90;
    same.bkGrR = same.bkGrG = same.bkGrB = 90;
    blue.bkGrR = 0, blue.bkGrG = 0, blue.bkGrB = 160;
    blue.songR = 0, blue.songG = 60, blue.songB = 255;
    for (const Settings& settings : {dark, light, same, blue}) {
        std::vector<uint32_t> pixels(static_cast<size_t>(kWidth) * kHeight);
        PanelPainter painter(text_);
        painter.Begin({pixels.data(), kWidth, kHeight}, MakePanelTheme(settings));
        painter.Paint(ElementSet().set(), look_);
        const PixelBox bar = FitPanel(kWidth, kHeight).ToPixels(SongTrack());
        const auto colorAt = [&](double place, int32_t y) {
            const auto x = static_cast<size_t>(bar.x + static_cast<int32_t>(bar.width * place));
            const uint32_t pixel = pixels[static_cast<size_t>(y) * kWidth + x];
            return Rgb{static_cast<uint8_t>(pixel >> 16U), static_cast<uint8_t>(pixel >> 8U),
                       static_cast<uint8_t>(pixel)};
        };
        const int32_t middle = bar.y + bar.height / 2;
        for (const double place : {0.1, 0.3, 0.6, 0.9}) {  // outside the play window, played, to be played
            EXPECT_GE(ContrastOf(colorAt(place, middle), colorAt(place, bar.y + bar.height - 2)), 3.0) << place;
        }
    }
}

TEST_F(PanelPainterTest, SurvivesWindowsOfAnyShape) {
    look_.model.title = std::string(160, 'w');
    look_.meter = {{36, 36}, {36, 36}};
    for (const auto& [width, height] : {std::pair{1, 1}, {2, 900}, {3000, 4}, {37, 11}, {300, 93}}) {
        EXPECT_EQ(PaintedWhole(width, height, look_).size(), static_cast<size_t>(width) * height);
    }
}

}  // namespace
}  // namespace hullrider
