#include "demo_music/notation.h"

#include <cmath>
#include <stdexcept>
#include <string>

namespace hullrider::demo {
namespace {

constexpr double kBeatsOfWholeNote = 4;

class MelodyReader {
public:
    MelodyReader(std::string_view text, double beatsPerBar) : text_(text), beatsPerBar_(beatsPerBar) {}

    Phrase Read() {
        while (at_ < text_.size()) ReadToken(text_[at_++]);
        CheckBarLine();
        return phrase_;
    }

private:
    void ReadToken(char token) {
        switch (token) {
            case ' ':
                return;
            case '|':
                return CheckBarLine();
            case '>':
                ++octave_;
                return;
            case '<':
                --octave_;
                return;
            case 'o':
                octave_ = ReadNumber();
                return;
            case 'v':
                velocity_ = ReadNumber() / 10.0;
                return;
            case 'l':
                if (!IsDigit()) Fail("a number is missing");
                length_ = ReadLength();
                return;
            case 'r':
                lastIsRest_ = true;
                phrase_.beats += ReadLength();
                return;
            case '^':
                return Lengthen();
            default:
                return AddNote(token);
        }
    }

    void AddNote(char name) {
        static constexpr std::string_view kNames = "c d ef g a b";
        const size_t step = kNames.find(name);
        if (step == std::string_view::npos) Fail("no such note");
        int key = 12 * (octave_ + 1) + static_cast<int>(step);
        if (Take('+')) ++key;
        if (Take('-')) --key;
        const double beats = ReadLength();
        phrase_.notes.push_back({phrase_.beats, beats, key, velocity_});
        phrase_.beats += beats;
        lastIsRest_ = false;
    }

    void Lengthen() {
        const double beats = ReadLength();
        if (!lastIsRest_) {
            if (phrase_.notes.empty()) Fail("nothing to make longer");
            phrase_.notes.back().beats += beats;
        }
        phrase_.beats += beats;
    }

    double ReadLength() {
        double beats = length_;
        if (IsDigit()) {
            const int fraction = ReadNumber();
            if (fraction == 0) Fail("a length of 0");
            beats = kBeatsOfWholeNote / fraction;
        }
        double added = beats;
        while (Take('.')) beats += (added /= 2);
        return beats;
    }

    int ReadNumber() {
        if (!IsDigit()) Fail("a number is missing");
        int number = 0;
        while (IsDigit() && number < 1000) number = number * 10 + (text_[at_++] - '0');
        return number;
    }

    bool IsDigit() const { return at_ < text_.size() && text_[at_] >= '0' && text_[at_] <= '9'; }

    bool Take(char wanted) {
        if (at_ >= text_.size() || text_[at_] != wanted) return false;
        ++at_;
        return true;
    }

    void CheckBarLine() const {
        const double bars = phrase_.beats / beatsPerBar_;
        if (std::abs(bars - std::round(bars)) > 1e-6) Fail("a bar of a wrong length");
    }

    [[noreturn]] void Fail(const char* what) const {
        throw std::invalid_argument(std::string(what) + " before \"" + std::string(text_.substr(at_, 12)) + "\" in \"" +
                                    std::string(text_) + "\"");
    }

    std::string_view text_;
    double beatsPerBar_;
    size_t at_ = 0;
    Phrase phrase_;
    int octave_ = 4;
    double length_ = 1;
    double velocity_ = 0.7;
    bool lastIsRest_ = false;
};

}  // namespace

Phrase ReadMelody(std::string_view text, double beatsPerBar) {
    return MelodyReader(text, beatsPerBar).Read();
}

}  // namespace hullrider::demo
