// The volume of one channel over output time: a straight line from where it is to where it goes, to the sample. A hard
// set moves the line at once, and what would be a step in the sound is let die away over a few milliseconds on top of
// it. One thread.
#pragma once

#include <cstddef>
#include <cstdint>

namespace hullrider {

class GainLine {
public:
    // To `value` at once. The difference to what sounded until now fades linearly over `smoothFrames`.
    void JumpTo(float value, size_t smoothFrames);
    // From the line's value to `target` over `frames`, then it stays exactly there.
    void SlideTo(float target, uint64_t frames);

    // Adds `frames` stereo frames, times the gain, to `mix`, and moves on by as many.
    void MixInto(const float* frames, size_t count, float* mix);
    void Advance(size_t frames);

    float Value() const { return static_cast<float>(LineAt(passed_)); }  // the line's, without what still dies away
    float Gain() const { return static_cast<float>(LineAt(passed_) + ResidueAt(residueLeft_)); }
    bool Sliding() const { return passed_ < length_; }

private:
    struct Piece {  // a stretch in which the gain is one straight line
        size_t frames;
        float first, step;
    };
    Piece NextPiece(size_t maxFrames) const;
    double LineAt(uint64_t passed) const;
    double ResidueAt(size_t left) const;

    double start_ = 1.0, target_ = 1.0;
    uint64_t length_ = 0, passed_ = 0;  // frames
    double residue_ = 0.0;              // at its beginning
    size_t residueLength_ = 0, residueLeft_ = 0;
};

}  // namespace hullrider
