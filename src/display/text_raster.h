// Text as coverage. The system's fonts draw it; the painters only place it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <tuple>

#include "display/coverage.h"

namespace hullrider {

// Titles come in any script; labels are short capitals of this program's own.
enum class TextFace : uint8_t { kTitle, kLabel };

struct TextStyle {
    TextFace face = TextFace::kTitle;
    int32_t sizePx = 12;    // the height of the em square
    int32_t spacingPx = 0;  // added between letters

    auto operator<=>(const TextStyle&) const = default;
};

struct TextMask {
    Coverage ink;
    Coverage glow;         // the ink, blurred; of the same size
    int32_t marginPx = 0;  // around the text on every side, in both coverages
    int32_t baseline = 0;  // from the top of the coverage
    int32_t widthPx = 0;   // the text's own, without the margins
};

class TextRasterizer {
public:
    virtual ~TextRasterizer() = default;

    // `text` is UTF-8. The ink has an empty margin of `marginPx`; the glow is left empty.
    virtual TextMask Draw(const std::string& text, const TextStyle& style, int32_t marginPx) = 0;
};

// Caches recently drawn texts, so that a scrolling line is not redrawn with every step.
class TextCache {
public:
    explicit TextCache(TextRasterizer& rasterizer) : rasterizer_(rasterizer) {}

    // With glow. The reference is valid until the next call.
    const TextMask& Get(const std::string& text, const TextStyle& style);
    void Clear() { masks_.clear(); }

private:
    TextRasterizer& rasterizer_;
    std::map<std::tuple<std::string, TextStyle>, TextMask> masks_;
};

}  // namespace hullrider
