#include "audio/gain_line.h"

#include <algorithm>

#include "audio/ring.h"

namespace hullrider {

double GainLine::LineAt(uint64_t passed) const {
    if (passed >= length_) return target_;
    return start_ + (target_ - start_) * (static_cast<double>(passed) / static_cast<double>(length_));
}

double GainLine::ResidueAt(size_t left) const {
    return left == 0 ? 0.0 : residue_ * static_cast<double>(left) / static_cast<double>(residueLength_);
}

void GainLine::JumpTo(float value, size_t smoothFrames) {
    residue_ = LineAt(passed_) + ResidueAt(residueLeft_) - static_cast<double>(value);
    residueLength_ = residueLeft_ = residue_ == 0.0 ? 0 : smoothFrames;
    start_ = target_ = static_cast<double>(value);
    length_ = passed_ = 0;
}

void GainLine::SlideTo(float target, uint64_t frames) {
    start_ = LineAt(passed_);
    target_ = static_cast<double>(target);
    length_ = frames;
    passed_ = 0;
}

GainLine::Piece GainLine::NextPiece(size_t maxFrames) const {
    size_t frames = maxFrames;
    if (Sliding()) frames = static_cast<size_t>(std::min<uint64_t>(frames, length_ - passed_));
    if (residueLeft_ > 0) frames = std::min(frames, residueLeft_);
    const double first = LineAt(passed_) + ResidueAt(residueLeft_);
    const size_t residueThen = residueLeft_ - std::min(residueLeft_, frames);
    const double last = LineAt(passed_ + frames) + ResidueAt(residueThen);
    return {frames, static_cast<float>(first), static_cast<float>((last - first) / static_cast<double>(frames))};
}

void GainLine::MixInto(const float* frames, size_t count, float* mix) {
    while (count > 0) {
        const Piece piece = NextPiece(count);
        if (piece.first != 0.0f || piece.step != 0.0f) {
            for (size_t i = 0; i < piece.frames; i++) {
                const float gain = piece.first + piece.step * static_cast<float>(i);
                mix[i * kStereo] += frames[i * kStereo] * gain;
                mix[i * kStereo + 1] += frames[i * kStereo + 1] * gain;
            }
        }
        Advance(piece.frames);
        frames += piece.frames * kStereo;
        mix += piece.frames * kStereo;
        count -= piece.frames;
    }
}

void GainLine::Advance(size_t frames) {
    passed_ = std::min<uint64_t>(length_, passed_ + frames);
    residueLeft_ -= std::min(residueLeft_, frames);
}

}  // namespace hullrider
