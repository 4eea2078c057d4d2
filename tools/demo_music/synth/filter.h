// A state-variable filter that stays stable while it is tuned: Zavalishin, "The Art of VA Filter Design", chapter 4.
#pragma once

#include <algorithm>

#include "demo_music/synth/stereo.h"

namespace hullrider::demo {

class StateVariableFilter {
public:
    // `resonance` from 0 (none) to 1 (rings for ever).
    void Tune(double hz, double resonance, double sampleRate = kSampleRate) {
        g_ = std::tan(kPi * std::clamp(hz, 10.0, sampleRate * 0.45) / sampleRate);
        r_ = 2 - 2 * std::clamp(resonance, 0.0, 0.98);
        d_ = 1 / (1 + r_ * g_ + g_ * g_);
    }

    double LowPass(double in) { return Step(in), low_; }
    double BandPass(double in) { return Step(in), band_; }
    double HighPass(double in) { return Step(in), high_; }

private:
    void Step(double in) {
        high_ = (in - (r_ + g_) * s1_ - s2_) * d_;
        band_ = g_ * high_ + s1_;
        low_ = g_ * band_ + s2_;
        s1_ = g_ * high_ + band_;
        s2_ = g_ * band_ + low_;
    }

    double g_ = 0, r_ = 2, d_ = 1;
    double s1_ = 0, s2_ = 0, high_ = 0, band_ = 0, low_ = 0;
};

}  // namespace hullrider::demo
