#include "demo_music/feel.h"

#include <algorithm>
#include <cmath>

namespace hullrider::demo {

Phrase Swung(Phrase phrase, double unitBeats, double ratio) {
    const double pair = 2 * unitBeats;
    const auto swing = [=](double beat) {
        const double start = std::floor(beat / pair + 1e-9) * pair;
        const double through = (beat - start) / pair;
        const double late = through < 0.5 ? through * 2 * ratio : ratio + (through - 0.5) * 2 * (1 - ratio);
        return start + late * pair;
    };
    for (Note& note : phrase.notes) {
        const double end = swing(note.start + note.beats);
        note.start = swing(note.start);
        note.beats = end - note.start;
    }
    return phrase;
}

Phrase Pulsed(Phrase phrase, double beatsPerBar, double depth) {
    for (Note& note : phrase.notes) {
        const double inBar = note.start - std::floor(note.start / beatsPerBar + 1e-6) * beatsPerBar;
        const bool onBeat = std::abs(inBar - std::round(inBar)) < 0.05;
        const double weakness = inBar < 0.05 ? 0 : onBeat ? 0.5 : 1;
        note.velocity *= 1 - depth * weakness;
    }
    return phrase;
}

Phrase Humanised(Phrase phrase, Random& random, double beats, double velocity) {
    for (Note& note : phrase.notes) {
        note.start = std::max(0.0, note.start + beats * random.Bell());
        note.velocity = std::clamp(note.velocity * (1 + velocity * random.Bell()), 0.05, 1.0);
    }
    return phrase;
}

Phrase Strummed(Phrase phrase, double beats) {
    std::stable_sort(phrase.notes.begin(), phrase.notes.end(), [](const Note& a, const Note& b) {
        return a.start < b.start || (a.start == b.start && a.key < b.key);
    });
    double last = -1, shift = 0;
    for (Note& note : phrase.notes) {
        shift = note.start == last ? shift + beats : 0;
        last = note.start;
        note.start += shift;
        note.beats = std::max(beats, note.beats - shift);
    }
    return phrase;
}

}  // namespace hullrider::demo
