// The decoder thread's side of a channel.
#include <algorithm>
#include <cmath>

#include "audio/channel.h"

namespace hullrider {

namespace {

using std::chrono::milliseconds;

// Decoding happens in few large pieces, because waking up costs as much as a good deal of decoding. A ring is filled
// when it is half empty. The first piece is small, because someone waits for it, and the next ones no longer than what
// lies ahead: each must be done while that is heard, on a busy machine too.
constexpr uint32_t kAheadMs = 2000;
constexpr uint32_t kFirstPieceMs = 80;
constexpr uint32_t kPieceMs = 500;

constexpr milliseconds kRetry(10);  // the callback has not yet passed over what a seek made void

// Broken data can hold what is no number, or one that would deafen for ever through a filter.
void MakeSane(float* samples, size_t count) {
    constexpr float kLoudest = 32.0f;
    for (size_t i = 0; i < count; i++) samples[i] = std::fabs(samples[i]) <= kLoudest ? samples[i] : 0.0f;
}

size_t FramesOf(uint32_t ms, uint32_t rate) {
    return size_t{rate} * ms / 1000;
}

}  // namespace

SteadyTime Channel::DecodeAhead(SteadyTime now) {
    const bool first = TakeSeek();
    const size_t wanted = first ? FramesOf(kFirstPieceMs, mixRate_) : FramesWanted();
    const size_t decoded = DecodePiece(wanted);
    if (first) ready_.store(decoding_);
    return NextCall(now, decoded > 0);
}

// Moves the source where the newest generation begins, if that is not where it is. True when a first piece is wanted.
bool Channel::TakeSeek() {
    uint64_t generation = 0;
    int64_t frame = 0;
    {
        const std::lock_guard lock(mutex_);
        generation = LoadControl().generation;
        frame = seekFrame_;
    }
    if (generation == decoding_) return false;
    const bool there = decoding_ == 0 && frame == 0;  // just opened
    sourceEnded_ = !there && !source_->Seek(frame);
    decoding_ = generation;
    end_.store(kNoEnd);
    fromStart_.store(frame == 0);
    begin_.store(ring_.Written());
    return true;
}

// What lies in the ring and can be heard still.
size_t Channel::FramesAhead() const {
    return static_cast<size_t>(ring_.Written() - std::max(ring_.Taken(), begin_.load()));
}

size_t Channel::FramesWanted() const {
    if (sourceEnded_) return 0;
    const size_t ahead = FramesAhead();
    const size_t full = FramesOf(LoadControl().state == RunState::kPlaying ? kAheadMs : kFirstPieceMs, mixRate_);
    const size_t piece = std::clamp(ahead, FramesOf(kFirstPieceMs, mixRate_), FramesOf(kPieceMs, mixRate_));
    return std::min(piece, full - std::min(full, ahead));
}

size_t Channel::DecodePiece(size_t frames) {
    size_t done = 0;
    while (done < frames && !sourceEnded_) {
        const std::span<float> room = ring_.Writable(frames - done);
        if (room.empty()) break;
        const SourceRead read = source_->Read(room.data(), room.size() / kStereo);
        MakeSane(room.data(), read.frames * kStereo);
        ring_.Commit(read.frames);
        done += read.frames;
        sourceEnded_ = read.atEnd;
        if (read.frames == 0) break;
    }
    if (sourceEnded_) end_.store(ring_.Written());
    return done;
}

SteadyTime Channel::NextCall(SteadyTime now, bool progressed) const {
    const Control control = LoadControl();
    if (control.generation != decoding_) return now;
    if (sourceEnded_ || control.state != RunState::kPlaying) return SteadyTime::max();
    const size_t ahead = FramesAhead();
    const size_t full = FramesOf(kAheadMs, mixRate_);
    if (ahead + FramesOf(kFirstPieceMs, mixRate_) < full) return progressed ? now : now + kRetry;
    return now + milliseconds((ahead - full / 2) * 1000 / mixRate_);
}

}  // namespace hullrider
