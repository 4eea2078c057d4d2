#include <algorithm>

#include "demo_music/synth/envelope.h"

namespace hullrider::demo {
namespace {

constexpr double kAttackSeconds = 0.003;

struct Pair {
    double carrierStep, modulatorStep, index, indexFactor, level, levelFactor;
    double carrier = 0, modulator = 0;

    Pair(const FmPair& pair, const Tone& tone)
        : carrierStep(2 * kPi * pair.carrierRatio * tone.hz / kSampleRate),
          modulatorStep(2 * kPi * pair.modulatorRatio * tone.hz / kSampleRate),
          // Struck harder is brighter, and high notes are plainer: their partials would pass the upper end of hearing.
          index(pair.index * tone.velocity * std::min(1.5, std::sqrt(520 / tone.hz))),
          indexFactor(DecayFactor(pair.indexSeconds)),
          level(pair.level * tone.velocity),
          levelFactor(DecayFactor(pair.ringSeconds * std::min(2.0, std::sqrt(520 / tone.hz)))) {}

    double Next() {
        carrier += carrierStep;
        modulator += modulatorStep;
        index *= indexFactor;
        level *= levelFactor;
        return level * std::sin(carrier + index * std::sin(modulator));
    }
};

bool IsHeard(const std::vector<Pair>& pairs) {
    return std::any_of(pairs.begin(), pairs.end(), [](const Pair& pair) { return pair.level > 1e-4; });
}

void AddFmTone(const FmPatch& patch, const Tone& tone, size_t start, Stereo& sound) {
    std::vector<Pair> pairs;
    double total = 0;
    for (const FmPair& pair : patch.pairs) {
        pairs.emplace_back(pair, tone);
        total += pair.level;
    }
    const size_t letGo = FramesOf(tone.seconds), end = letGo + FramesOf(patch.releaseSeconds);
    const double releaseFactor = DecayFactor(patch.releaseSeconds);
    double gain = 1 / total;
    for (size_t i = 0; i < end && start + i < sound.frames() && IsHeard(pairs); ++i) {
        if (i >= letGo) gain *= releaseFactor;
        double value = 0;
        for (Pair& pair : pairs) value += pair.Next();
        value *= gain * std::min(1.0, static_cast<double>(i) / (kAttackSeconds * kSampleRate));
        // The tremolo runs on with the piece, not anew with every note.
        const double side =
            patch.tremoloDepth * std::sin(2 * kPi * patch.tremoloHz * static_cast<double>(start + i) / kSampleRate);
        sound.Add(start + i, value * (1 - side), value * (1 + side));
    }
}

}  // namespace

Instrument FrequencyModulated(const FmPatch& patch) {
    return [patch](const Tone& tone, size_t start, Random&, Stereo& sound) { AddFmTone(patch, tone, start, sound); };
}

}  // namespace hullrider::demo
