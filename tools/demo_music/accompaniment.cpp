#include "demo_music/accompaniment.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <functional>
#include <stdexcept>
#include <string>

namespace hullrider::demo {
namespace {

constexpr double kNormal = 0.68, kAccent = 0.86, kSoft = 0.45;

double VelocityOf(char step) {
    return step == 'X' ? kAccent : step == 'o' || step == 'r' ? kSoft : kNormal;
}

size_t SpanAt(const Progression& progression, double beat) {
    size_t index = 0;
    while (index + 1 < progression.size() && progression[index + 1].start <= beat + 1e-9) ++index;
    return index;
}

using KeysOfStep = std::function<std::vector<int>(char step, size_t span)>;

Phrase RunSteps(double beats, const Progression& progression, std::string_view steps, double stepBeats,
                const KeysOfStep& keysOf) {
    Phrase phrase = Rest(beats);
    size_t lastStrike = 0;  // where the notes of the last strike begin in phrase.notes
    for (int i = 0; i * stepBeats < beats - 1e-9; ++i) {
        const char step = steps[static_cast<size_t>(i) % steps.size()];
        if (step == '.') {
            lastStrike = phrase.notes.size();
        } else if (step == '-') {
            for (size_t n = lastStrike; n < phrase.notes.size(); ++n) phrase.notes[n].beats += stepBeats;
        } else {
            lastStrike = phrase.notes.size();
            for (const int key : keysOf(step, SpanAt(progression, i * stepBeats))) {
                phrase.notes.push_back({i * stepBeats, stepBeats, key, VelocityOf(step)});
            }
        }
    }
    return phrase;
}

int FromOctave(int lowestKey, int pitchClass) {
    return lowestKey + ((pitchClass - lowestKey) % 12 + 12) % 12;
}

// The chord's own third, fifth or seventh, above its root, whatever its quality; the octave when it has none.
int IntervalNear(const Chord& chord, int low, int high) {
    const auto found = std::find_if(chord.intervals.begin(), chord.intervals.end(),
                                    [=](int interval) { return interval >= low && interval <= high; });
    return found == chord.intervals.end() ? 12 : *found;
}

int BassKey(const Progression& progression, char step, size_t span, int lowestKey) {
    const Chord& chord = progression[span].chord;
    const Chord& next = progression[(span + 1) % progression.size()].chord;
    const int root = FromOctave(lowestKey, chord.root);
    switch (step) {
        case 'R':
        case 'r':
            return FromOctave(lowestKey, chord.bass);
        case '3':
            return root + IntervalNear(chord, 3, 5);
        case '5':
            return root + IntervalNear(chord, 6, 7);
        case '7':
            return root + IntervalNear(chord, 9, 11);
        case '8':
            return FromOctave(lowestKey, chord.bass) + 12;
        case 'n':
            return FromOctave(lowestKey, next.bass);
        case 'a':
            return FromOctave(lowestKey, next.bass) - 1;
        default:
            throw std::invalid_argument(std::string("no such bass step: ") + step);
    }
}

}  // namespace

Phrase Comp(const Progression& progression, const Voicings& voicings, std::string_view steps, double stepBeats) {
    return RunSteps(BeatsOf(progression), progression, steps, stepBeats,
                    [&](char, size_t span) { return voicings[span]; });
}

Phrase Arpeggio(const Progression& progression, const Voicings& voicings, std::string_view steps, double stepBeats) {
    return RunSteps(BeatsOf(progression), progression, steps, stepBeats, [&](char step, size_t span) {
        const std::vector<int>& voicing = voicings[span];
        if (step < '1' || step > '9') throw std::invalid_argument(std::string("no such arpeggio step: ") + step);
        const auto index = static_cast<size_t>(step - '1');
        return std::vector<int>{voicing[index % voicing.size()] + 12 * static_cast<int>(index / voicing.size())};
    });
}

Phrase Bass(const Progression& progression, std::string_view steps, double stepBeats, int lowestKey) {
    return RunSteps(BeatsOf(progression), progression, steps, stepBeats, [&](char step, size_t span) {
        return std::vector<int>{BassKey(progression, step, span, lowestKey)};
    });
}

Phrase Drums(std::initializer_list<DrumLine> lines, double stepBeats, double beats) {
    Phrase kit = Rest(beats);
    for (const DrumLine& line : lines) {
        kit = std::move(kit) &
              RunSteps(beats, {}, line.steps, stepBeats, [&](char, size_t) { return std::vector<int>{line.key}; });
    }
    return kit;
}

}  // namespace hullrider::demo
