#include "demo_music/accompaniment.h"
#include "demo_music/synth/envelope.h"
#include "demo_music/synth/filter.h"

namespace hullrider::demo {
namespace {

// A drum is a falling sine (its skin) and filtered noise (its rattle), each with a length of its own.
struct DrumPatch {
    double skinHz = 0, skinDropOctaves = 0, dropSeconds = 0.1, skinSeconds = 0.2, skinLevel = 0;
    double noiseHz = 0, noiseResonance = 0, noiseAttack = 0.001, noiseSeconds = 0.1, noiseLevel = 0;
    bool noiseHigh = false;  // high-passed at noiseHz; band-passed otherwise
    double side = 0;
};

DrumPatch PatchOf(int key) {
    switch (key) {
        case kKick:
            return {46, 1.6, 0.12, 0.5, 1.0, 1800, 0, 0.0005, 0.03, 0.12, false, 0};
        case kSnare:
            return {185, 0.4, 0.1, 0.22, 0.35, 2200, 0.1, 0.001, 0.32, 0.7, false, -0.05};
        case kRim:
            return {820, 0.1, 0.02, 0.06, 0.5, 2600, 0.5, 0.0005, 0.05, 0.6, false, -0.25};
        case kTom:
            return {95, 0.6, 0.2, 0.6, 0.9, 900, 0, 0.001, 0.08, 0.15, false, 0.3};
        case kHat:
            return {0, 0, 0.1, 0.1, 0, 7500, 0, 0.001, 0.09, 0.5, true, 0.25};
        case kOpenHat:
            return {0, 0, 0.1, 0.1, 0, 7000, 0, 0.001, 0.5, 0.5, true, 0.25};
        case kShaker:
            return {0, 0, 0.1, 0.1, 0, 6000, 0.2, 0.025, 0.14, 0.6, false, -0.4};
        default:
            return {0, 0, 0.1, 0.1, 0, 5500, 0, 0.004, 2.2, 0.5, true, -0.2};  // cymbals
    }
}

void AddDrum(const Tone& tone, size_t start, Random& random, Stereo& sound) {
    const DrumPatch drum = PatchOf(tone.key);
    StateVariableFilter filter;
    filter.Tune(drum.noiseHz * (0.8 + 0.3 * tone.velocity), drum.noiseResonance);
    const double skinFactor = DecayFactor(drum.skinSeconds), noiseFactor = DecayFactor(drum.noiseSeconds);
    const double dropFactor = DecayFactor(drum.dropSeconds);
    double skin = drum.skinLevel, noise = drum.noiseLevel, drop = 1, phase = 0;
    for (size_t i = 0; start + i < sound.frames() && (skin > 1e-4 || noise > 1e-4); ++i) {
        const double seconds = static_cast<double>(i) / kSampleRate;
        phase += 2 * kPi * drum.skinHz * std::exp2(drum.skinDropOctaves * drop) / kSampleRate;
        const double raw = random.Bipolar();
        const double rattle = drum.noiseHigh ? filter.HighPass(raw) : filter.BandPass(raw);
        const double value = tone.velocity * (skin * std::sin(phase) * std::min(1.0, seconds / 0.001) +
                                              noise * rattle * std::min(1.0, seconds / drum.noiseAttack));
        sound.Add(start + i, value * (1 - drum.side), value * (1 + drum.side));
        skin *= skinFactor;
        drop *= dropFactor;
        if (seconds >= drum.noiseAttack) noise *= noiseFactor;
    }
}

}  // namespace

Instrument SoftDrums() {
    return AddDrum;
}

}  // namespace hullrider::demo
