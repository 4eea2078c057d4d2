// The sounds of the modules, all computed.
#pragma once

#include <string>
#include <vector>

#include "demo_music/synth/instrument.h"

namespace hullrider::demo {

struct Sample {
    std::string name;
    std::vector<double> wave;  // -1..1
    double rate = 8363;        // frames a second at which it sounds as `key`
    int key = 60;
    size_t loopStart = 0, loopLength = 0;  // loopLength 0: plays once
    double volume = 1;                     // 0..1, at a velocity of 0.7
    // Only for formats that keep these with the sample: XM.
    double attackSeconds = 0, releaseSeconds = 0;
    double pan = 0;  // -1 left, 1 right
};

// The wave of a sound chip: one cycle of `levels`, looped.
Sample ChipWave(std::string name, const std::vector<double>& levels, int key);
// A pulse that is high for `duty` of its cycle.
Sample ChipPulse(std::string name, double duty, int key);

// Harmonics at the strengths `bright` that settle to `steady` within `seconds` and go on for ever in a loop.
Sample Additive(std::string name, const std::vector<double>& bright, const std::vector<double>& steady, double seconds,
                int key, double rate);

// A choir-like sound without beginning or end, `seconds` of loop: harmonics `strengths`, each a band of sines of random
// phase `widthCents` wide. After Paul Nasca's PADsynth algorithm.
Sample EndlessPad(std::string name, const std::vector<double>& strengths, double widthCents, double seconds, int key,
                  double rate, uint64_t seed);

// An instrument of the recordings playing `keys` together, cut after `seconds`; it sounds as `key`.
Sample Sampled(std::string name, const Instrument& instrument, const std::vector<int>& keys, double heldSeconds,
               double seconds, int key, double rate);

}  // namespace hullrider::demo
