#include "demo_music/phrase.h"

#include <algorithm>

namespace hullrider::demo {

Phrase Rest(double beats) {
    return {{}, beats};
}

Phrase operator+(Phrase first, const Phrase& then) {
    for (Note note : then.notes) {
        note.start += first.beats;
        first.notes.push_back(note);
    }
    first.beats += then.beats;
    return first;
}

Phrase operator*(const Phrase& phrase, int times) {
    Phrase all;
    for (int i = 0; i < times; ++i) all = std::move(all) + phrase;
    return all;
}

Phrase operator&(Phrase upper, const Phrase& lower) {
    upper.notes.insert(upper.notes.end(), lower.notes.begin(), lower.notes.end());
    std::stable_sort(upper.notes.begin(), upper.notes.end(),
                     [](const Note& a, const Note& b) { return a.start < b.start; });
    upper.beats = std::max(upper.beats, lower.beats);
    return upper;
}

Phrase Transposed(Phrase phrase, int semitones) {
    for (Note& note : phrase.notes) note.key += semitones;
    return phrase;
}

Phrase Louder(Phrase phrase, double factor) {
    return Swelling(std::move(phrase), factor, factor);
}

Phrase Swelling(Phrase phrase, double from, double to) {
    for (Note& note : phrase.notes) {
        const double through = phrase.beats > 0 ? note.start / phrase.beats : 0;
        note.velocity = std::clamp(note.velocity * (from + (to - from) * through), 0.02, 1.0);
    }
    return phrase;
}

Phrase Delayed(Phrase phrase, double beats) {
    for (Note& note : phrase.notes) note.start += beats;
    return phrase;
}

Phrase Detached(Phrase phrase, double factor) {
    for (Note& note : phrase.notes) note.beats *= factor;
    return phrase;
}

Phrase Slice(const Phrase& phrase, double from, double to) {
    Phrase part = Rest(to - from);
    for (Note note : phrase.notes) {
        if (note.start < from || note.start >= to) continue;
        note.start -= from;
        part.notes.push_back(note);
    }
    return part;
}

Phrase Only(const Phrase& phrase, int key) {
    Phrase part = Rest(phrase.beats);
    std::copy_if(phrase.notes.begin(), phrase.notes.end(), std::back_inserter(part.notes),
                 [key](const Note& note) { return note.key == key; });
    return part;
}

}  // namespace hullrider::demo
