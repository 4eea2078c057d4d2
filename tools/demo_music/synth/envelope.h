// Attack, decay, sustain, release, a sample at a time: a straight attack, exponential decay and release.
#pragma once

#include "demo_music/synth/instrument.h"

namespace hullrider::demo {

// The factor by which a value shrinks a sample so that it falls by 60 dB in `seconds`.
inline double DecayFactor(double seconds) {
    return std::pow(10.0, -3.0 / (seconds * kSampleRate));
}

class Envelope {
public:
    Envelope(const EnvelopeShape& shape, double heldSeconds)
        : sustain_(shape.sustain),
          attackStep_(1 / (shape.attack * kSampleRate + 1)),
          decayFactor_(DecayFactor(shape.decay)),
          releaseFactor_(DecayFactor(shape.release)),
          left_(FramesOf(heldSeconds)) {}

    double Next() {
        if (left_ == 0) return level_ *= releaseFactor_;
        --left_;
        if (!attacked_) {
            level_ += attackStep_;
            attacked_ = level_ >= 1;
            return level_;
        }
        return level_ = sustain_ + (level_ - sustain_) * decayFactor_;
    }

    // Let go and no longer heard.
    bool Over() const { return left_ == 0 && level_ < 1e-4; }

private:
    double sustain_, attackStep_, decayFactor_, releaseFactor_;
    size_t left_;
    double level_ = 0;
    bool attacked_ = false;
};

}  // namespace hullrider::demo
