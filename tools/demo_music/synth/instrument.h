// The instruments of the recordings, each a way to add one note to a sound.
#pragma once

#include <functional>

#include "demo_music/random.h"
#include "demo_music/synth/stereo.h"

namespace hullrider::demo {

struct Tone {
    int key = 60;
    double hz = 261.6;
    double seconds = 1;  // until it is let go; most instruments ring on
    double velocity = 0.7;
};

// Adds the tone to the sound from frame `start`, at a peak of about `velocity`.
using Instrument = std::function<void(const Tone& tone, size_t start, Random& random, Stereo& sound)>;

// Equal temperament, a4 (key 69) at 440 Hz.
double FrequencyOf(int key);

// Times in seconds; `sustain` is a level in 0..1.
struct EnvelopeShape {
    double attack = 0.01, decay = 0.3, sustain = 0.6, release = 0.2;
};

enum class Wave { kSaw, kPulse, kTriangle, kSine };

// Detuned oscillators through a resonant low-pass filter that has an envelope of its own.
struct SubtractivePatch {
    Wave wave = Wave::kSaw;
    int oscillators = 2;
    double detuneCents = 8;  // from the lowest oscillator to the highest
    double width = 0.5;      // how far the oscillators spread to the sides, 0..1
    double subLevel = 0;     // a sine an octave below
    EnvelopeShape loudness{};
    EnvelopeShape brightness{};
    double cutoffHz = 800;  // of the filter at rest, for middle C; half of the key's distance is followed
    double brightnessOctaves = 2;
    double resonance = 0.2;   // 0..1
    double vibratoCents = 0;  // fades in over the first half second, 5 Hz
};
Instrument Subtractive(const SubtractivePatch& patch);

// A string: Karplus and Strong's loop, tuned and damped as in Jaffe and Smith, "Extensions of the Karplus-Strong
// Plucked-String Algorithm" (Computer Music Journal 7/2, 1983).
struct StringPatch {
    double ringSeconds = 4;      // to -60 dB, at middle C
    double brightness = 0.6;     // of the pluck, 0..1
    double damping = 0.3;        // how much faster high partials die, 0..0.5
    double pluckPosition = 0.2;  // from the bridge, as a part of the string
};
Instrument PluckedString(const StringPatch& patch);

// Frequency modulation after Chowning, "The Synthesis of Complex Audio Spectra by Means of Frequency Modulation"
// (1973): each pair is a sine whose phase is moved by another, both dying away.
struct FmPair {
    double carrierRatio = 1, modulatorRatio = 1;  // to the tone's frequency
    double index = 1;                             // radians, at full velocity
    double indexSeconds = 0.5, ringSeconds = 2;   // to -60 dB
    double level = 1;
};
struct FmPatch {
    std::vector<FmPair> pairs;
    double tremoloHz = 0, tremoloDepth = 0;  // from side to side, as an electric piano's
    double releaseSeconds = 0.4;
};
Instrument FrequencyModulated(const FmPatch& patch);

// A soft kit: the key is a drum of accompaniment.h.
Instrument SoftDrums();

}  // namespace hullrider::demo
