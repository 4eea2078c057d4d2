// The gain of one channel over output time: a straight line from one value to another, to the sample. A hard set moves
// the line at once; the step in the sound decays over a few milliseconds. One thread.
#pragma once

#include <cstddef>
#include <cstdint>

namespace hullrider {

class GainLine {
public:
    // Jumps to `value`. The difference from the previous gain decays linearly over `smoothFrames`.
    void JumpTo(float value, size_t smoothFrames);
    // Moves from the current value to `target` over `frames`, and stays exactly there.
    void SlideTo(float target, uint64_t frames);

    // Adds `frames`, `count` stereo frames, to `mix` with the gain applied, and advances by as many.
    void MixInto(const float* frames, size_t count, float* mix);
    void Advance(size_t frames);

    float Value() const { return static_cast<float>(LineAt(passed_)); }  // the line's, without a decaying step
    float Gain() const { return static_cast<float>(LineAt(passed_) + ResidueAt(residueLeft_)); }
    bool Sliding() const { return passed_ < length_; }

private:
    struct Piece {  // a stretch in which the gain is linear
        size_t frames;
        float first, step;
    };
    Piece NextPiece(size_t maxFrames) const;
    double LineAt(uint64_t passed) const;
    double ResidueAt(size_t left) const;

    double start_ = 1.0, target_ = 1.0;
    uint64_t length_ = 0, passed_ = 0;  // frames
    double residue_ = 0.0;              // at the start of its decay
    size_t residueLength_ = 0, residueLeft_ = 0;
};

}  // namespace hullrider
