#include "demo_music/harmony.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>

namespace hullrider::demo {
namespace {

const std::vector<int>& IntervalsOf(const std::string& quality) {
    static const std::map<std::string, std::vector<int>> kQualities{
        {"", {0, 4, 7}},
        {"m", {0, 3, 7}},
        {"6", {0, 4, 7, 9}},
        {"m6", {0, 3, 7, 9}},
        {"7", {0, 4, 7, 10}},
        {"m7", {0, 3, 7, 10}},
        {"maj7", {0, 4, 7, 11}},
        {"9", {0, 4, 7, 10, 14}},
        {"m9", {0, 3, 7, 10, 14}},
        {"maj9", {0, 4, 7, 11, 14}},
        {"13", {0, 4, 10, 14, 21}},
        {"7b9", {0, 4, 7, 10, 13}},
        {"m7b5", {0, 3, 6, 10}},
        {"sus4", {0, 5, 7}},
        {"7sus4", {0, 5, 7, 10}},
        {"add9", {0, 4, 7, 14}},
    };
    const auto found = kQualities.find(quality);
    if (found == kQualities.end()) throw std::invalid_argument("no such chord: " + quality);
    return found->second;
}

int ReadRoot(const std::string& text, size_t& at) {
    static constexpr std::string_view kNames = "C D EF G A B";
    const size_t step = at < text.size() ? kNames.find(text[at]) : std::string_view::npos;
    if (step == std::string_view::npos) throw std::invalid_argument("no such chord: " + text);
    ++at;
    int root = static_cast<int>(step);
    if (at < text.size() && text[at] == '#') ++root, ++at;
    if (at < text.size() && text[at] == 'b') --root, ++at;
    return (root + 12) % 12;
}

Chord ReadChord(const std::string& text) {
    Chord chord;
    size_t at = 0;
    chord.root = chord.bass = ReadRoot(text, at);
    const size_t slash = std::min(text.find('/'), text.size());
    chord.intervals = IntervalsOf(text.substr(at, slash - at));
    if (slash < text.size()) {
        at = slash + 1;
        chord.bass = ReadRoot(text, at);
    }
    return chord;
}

std::vector<Chord> ReadBar(const std::string& bar, const Progression& before) {
    std::vector<Chord> chords;
    std::istringstream words(bar);
    for (std::string word; words >> word;) {
        if (word == "%" && before.empty()) throw std::invalid_argument("no chord to repeat");
        chords.push_back(word == "%" ? before.back().chord : ReadChord(word));
    }
    if (chords.empty()) throw std::invalid_argument("an empty bar of chords");
    return chords;
}

// The pitch classes that `voices` voices play, in the order of the chord.
std::vector<int> ChosenPitches(const Chord& chord, int voices) {
    std::vector<int> intervals = chord.intervals;
    const auto leaveOut = [&](int interval) {
        if (static_cast<int>(intervals.size()) > voices) std::erase(intervals, interval);
    };
    leaveOut(0);
    leaveOut(7);
    if (static_cast<int>(intervals.size()) > voices) intervals.resize(static_cast<size_t>(voices));
    for (int& interval : intervals) interval = (chord.root + interval) % 12;
    std::sort(intervals.begin(), intervals.end());
    return intervals;
}

// The pitches from `lowest` up, as close as they get, the one at `first` lowest.
std::vector<int> Stack(const std::vector<int>& pitches, size_t first, int lowest, int voices) {
    std::vector<int> keys;
    int floor = lowest;
    for (int i = 0; i < voices; ++i) {
        const int pitch = pitches[(first + static_cast<size_t>(i)) % pitches.size()];
        const int key = floor + ((pitch - floor) % 12 + 12) % 12;
        keys.push_back(key);
        floor = key + 1;
    }
    return keys;
}

double Movement(const std::vector<int>& from, const std::vector<int>& to, int middleKey) {
    double sum = 0, total = 0;
    for (size_t i = 0; i < to.size(); ++i) {
        if (i < from.size()) sum += std::abs(to[i] - from[i]);
        total += to[i];
    }
    const double drift = std::abs(total / static_cast<double>(to.size()) - middleKey);
    return sum + drift * (from.empty() ? 100 : 1);
}

}  // namespace

Progression ReadChords(std::string_view text, double beatsPerBar) {
    Progression progression;
    std::istringstream bars{std::string(text)};
    double at = 0;
    for (std::string bar; std::getline(bars, bar, '|');) {
        const std::vector<Chord> chords = ReadBar(bar, progression);
        const double beats = beatsPerBar / static_cast<double>(chords.size());
        for (const Chord& chord : chords) {
            progression.push_back({at, beats, chord});
            at += beats;
        }
    }
    return progression;
}

double BeatsOf(const Progression& progression) {
    return progression.empty() ? 0 : progression.back().start + progression.back().beats;
}

Voicings LeadVoices(const Progression& progression, int voices, int middleKey) {
    Voicings voicings;
    std::vector<int> last;
    for (const ChordSpan& span : progression) {
        const std::vector<int> pitches = ChosenPitches(span.chord, voices);
        std::vector<int> best;
        double leastMovement = std::numeric_limits<double>::max();
        for (size_t first = 0; first < pitches.size(); ++first) {
            for (const int octave : {-18, -12, -6, 0}) {
                std::vector<int> keys = Stack(pitches, first, middleKey + octave, voices);
                const double movement = Movement(last, keys, middleKey);
                if (movement >= leastMovement) continue;
                leastMovement = movement;
                best = std::move(keys);
            }
        }
        voicings.push_back(best);
        last = best;
    }
    return voicings;
}

namespace {

Scale FromSteps(int tonic, std::initializer_list<int> steps) {
    Scale scale;
    for (const int step : steps) scale.pitchClasses.push_back((tonic + step) % 12);
    std::sort(scale.pitchClasses.begin(), scale.pitchClasses.end());
    return scale;
}

bool Holds(const Scale& scale, int key) {
    return std::find(scale.pitchClasses.begin(), scale.pitchClasses.end(), key % 12) != scale.pitchClasses.end();
}

}  // namespace

Scale Major(int tonic) {
    return FromSteps(tonic, {0, 2, 4, 5, 7, 9, 11});
}
Scale Minor(int tonic) {
    return FromSteps(tonic, {0, 2, 3, 5, 7, 8, 10});
}
Scale MajorPentatonic(int tonic) {
    return FromSteps(tonic, {0, 2, 4, 7, 9});
}

int StepInScale(const Scale& scale, int key, int steps) {
    while (!Holds(scale, key)) --key;
    const int direction = steps < 0 ? -1 : 1;
    for (int left = std::abs(steps); left > 0; --left) {
        do {
            key += direction;
        } while (!Holds(scale, key));
    }
    return key;
}

Phrase Harmonised(Phrase melody, const Scale& scale, int steps) {
    for (Note& note : melody.notes) note.key = StepInScale(scale, note.key, steps);
    return melody;
}

Phrase Embellished(const Phrase& melody, const Scale& scale, double noteBeats) {
    Phrase result = Rest(melody.beats);
    for (const Note& note : melody.notes) {
        if (note.beats < 4 * noteBeats || !Holds(scale, note.key)) {
            result.notes.push_back(note);
            continue;
        }
        const double turn = note.start + note.beats - 2 * noteBeats;
        result.notes.push_back({note.start, note.beats - 2 * noteBeats, note.key, note.velocity});
        result.notes.push_back({turn, noteBeats, StepInScale(scale, note.key, 1), note.velocity * 0.8});
        result.notes.push_back({turn + noteBeats, noteBeats, note.key, note.velocity * 0.75});
    }
    return result;
}

}  // namespace hullrider::demo
