// The callback's side of a channel: no lock, no allocation, no call that waits.
#include <algorithm>

#include "audio/channel.h"

namespace hullrider {

namespace {

constexpr size_t kStarvedMs = 100;

}  // namespace

Sounded Channel::Render(float* scratch, float* mix, size_t frames) {
    const Control control = LoadControl();
    const Limit end = PassOverVoid(control);
    const bool plays = control.state == RunState::kPlaying && !MustRefill(control, frames);
    Sounded sounded = plays ? PlayOn(control, scratch, frames, end) : LetFall(control, scratch, frames, end);
    volume_.MixInto(scratch, sounded.frames, mix, frames, sounding_.load());
    const bool whole = sounded.frames == frames;
    if (!whole && sounding_.load()) level_.Reset();
    sounding_.store(whole);
    // Nothing is lacking when the channel has ended or a caller has changed its state.
    if (plays && end && control_.load() == Pack(control)) sounded.lacking = frames - sounded.frames;
    if (sounded.frames == 0) return sounded;
    const float gain = volume_.LastGain();
    sounded.left = scratch[(sounded.frames - 1) * kStereo] * gain;
    sounded.right = scratch[(sounded.frames - 1) * kStereo + 1] * gain;
    return sounded;
}

// Silent until enough is ready, instead of stuttering. It runs dry with enough left for a fade-out.
bool Channel::MustRefill(Control control, size_t frames) {
    if (refillFrames_ == 0) return false;
    const size_t enough = refilling_ ? refillFrames_ : frames + rampOut_.Left();
    const bool isReady = ready_.load() == control.generation;
    refilling_ = !isReady || (end_.load() == kNoEnd && ring_.Ahead(begin_.load()) < enough);
    starved_.store(refilling_);
    return refilling_;
}

// Whether the next frames of this generation continue what was heard in the last block.
bool Channel::GoesOn(Control control) const {
    return sounding_.load() && heard_ == control.generation;
}

Sounded Channel::PlayOn(Control control, float* out, size_t frames, Limit end) {
    const bool begins = !GoesOn(control) || rampOut_.Done() > 0;
    rampOut_.Begin();
    const uint64_t firstFrame = ring_.Taken();
    const size_t taken = Take(control, out, frames, end);
    if (taken == 0) return {};
    if (begins) BeginSounding(control, firstFrame);
    effects_.Run(out, taken, begins);
    level_.Note(out, taken);
    rampIn_.Apply(out, taken);
    return {.frames = taken, .begins = begins};
}

// A sound that stops goes on for the few milliseconds of its fade-out. The frames stay in the ring: it resumes with
// them, fading in.
Sounded Channel::LetFall(Control control, float* out, size_t frames, Limit end) {
    if (!end || !GoesOn(control)) return {};
    const size_t falling = ring_.Peek(rampOut_.Done(), out, std::min(frames, rampOut_.Left()), *end);
    if (falling == 0) return {};
    effects_.Run(out, falling, false);
    rampIn_.Apply(out, falling);
    rampOut_.Apply(out, falling);
    return {.frames = falling};
}

// Frames from before the last seek make room in the ring, even while nothing plays. Returns the ring frame up to which
// it holds only the wanted generation, if that is ready: should the decoder turn to a later one at this moment, that
// one's frames lie beyond.
Channel::Limit Channel::PassOverVoid(Control control) {
    if (ready_.load() != control.generation) return std::nullopt;
    ring_.SkipTo(begin_.load());
    const uint64_t written = ring_.Written();
    return decoding_.load() == control.generation ? Limit(written) : std::nullopt;
}

// Sound that begins in mid-wave fades in; the start of a file is played as it is.
void Channel::BeginSounding(Control control, uint64_t firstFrame) {
    if (!sounding_) level_.Reset();
    heard_ = control.generation;
    if (fromStart_.load() && firstFrame == begin_.load()) {
        rampIn_.End();
    } else {
        rampIn_.Begin();
    }
}

// Takes frames before `end`; records the end of the sound and missing frames.
size_t Channel::Take(Control control, float* out, size_t frames, Limit end) {
    const size_t taken = ring_.Take(out, frames, end.value_or(0));
    if (taken < frames && end && ring_.Taken() == end_.load()) {
        uint64_t expected = Pack(control);
        control_.compare_exchange_strong(expected, Pack({control.generation, RunState::kEnded}));
        return taken;
    }
    missing_ = taken == frames ? 0 : missing_ + (frames - taken);
    starved_.store(missing_ * 1000 > kStarvedMs * mixRate_);
    return taken;
}

}  // namespace hullrider
