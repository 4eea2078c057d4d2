// The decoder thread's side of a channel.
#include <algorithm>

#include "audio/channel.h"
#include "audio/sane.h"

namespace hullrider {

namespace {

using std::chrono::milliseconds;

// Decoding happens in few large pieces, because waking up costs as much as a good deal of decoding. A ring is refilled
// when it is half empty. The first piece is small, because the caller waits for it, and the next ones are no longer
// than what lies ahead: each must be done before that has played, even on a busy machine.
constexpr uint32_t kFirstPieceMs = 80;
constexpr uint32_t kPieceMs = 500;

// Lead before a splice is heard, and the margin by which it must be ready.
constexpr uint32_t kRejoinLeadMs = 120;
constexpr uint32_t kRejoinMarginMs = 50;
constexpr uint32_t kRejoinRoomMs = 300;

constexpr float kLoudest = 32.0f;  // louder data is broken

// When nothing could be decoded: the callback has not yet skipped the void frames, or the network brings no more. With
// much ahead there is no hurry.
constexpr milliseconds kRetry(10);
constexpr size_t kRetriesAhead = 8;

size_t FramesOf(uint32_t ms, uint32_t rate) {
    return size_t{rate} * ms / 1000;
}

}  // namespace

SteadyTime Channel::DecodeAhead(SteadyTime now) {
    const bool first = TakeSeek();
    const bool joined = !first && TakeRejoin();
    const size_t wanted = first ? FramesOf(kFirstPieceMs, mixRate_) : FramesWanted();
    const size_t decoded = DecodePiece(wanted);
    if (first) ready_.store(decoding_.load());
    decodedMore_.notify_all();
    return NextCall(now, joined || decoded > 0);
}

// Seeks the source to the newest generation's start if needed. True when a first piece is wanted.
bool Channel::TakeSeek() {
    uint64_t generation = 0;
    int64_t frame = 0;
    {
        const std::lock_guard lock(mutex_);
        generation = LoadControl().generation;
        frame = seekFrame_;
    }
    if (generation == decoding_.load()) return false;
    rejoined_.store(rejoinOrders_.load());                   // a seek includes all pending changes
    const bool there = decoding_.load() == 0 && frame == 0;  // just opened
    sourceEnded_ = !there && !source_->Seek(frame);
    decoding_.store(generation);  // before its first frame is in the ring
    end_.store(kNoEnd);
    fromStart_.store(frame == 0);
    begin_.store(ring_.Written());
    const std::lock_guard lock(mutex_);
    marks_ = {{ring_.Written(), 0, static_cast<double>(frame), static_cast<double>(format_.rate) / mixRate_}};
    return true;
}

// Renders again what was decoded ahead, from shortly after the current position, and has the callback blend over to it
// there. True when something new is in the ring.
bool Channel::TakeRejoin() {
    const uint32_t order = rejoinOrders_.load();
    if (!WantsRejoin()) return false;
    const uint64_t from = std::max(ring_.Taken(), begin_.load()) + FramesOf(kRejoinLeadMs, mixRate_);
    const size_t room = ring_.Capacity() - static_cast<size_t>(ring_.Written() - ring_.Taken());
    const bool enough = ring_.Written() >= from + FramesOf(kRejoinLeadMs, mixRate_);
    if (!enough && sourceEnded_) rejoined_.store(order);  // too close to the end to change anything
    if (!enough || room < FramesOf(kRejoinRoomMs, mixRate_)) return false;
    double own = 0.0;
    {
        const std::lock_guard lock(mutex_);
        own = OwnFrameAt(from, 0);
    }
    sourceEnded_ = !source_->Rejoin(source_->Fold(static_cast<int64_t>(own)));
    end_.store(kNoEnd);
    const uint64_t begin = ring_.Written();
    const uint64_t late = DecodeSplice(from);
    const double pace = static_cast<double>(format_.rate) / mixRate_;
    {
        const std::lock_guard lock(mutex_);
        marks_.push_back({begin + late, begin - from, own + static_cast<double>(late) * pace, pace});
    }
    ring_.Splice(from + late, begin + late);
    rejoined_.store(order);
    return true;
}

// Decodes the replacement for the ring from frame `from` on: enough for the callback, which has moved on meanwhile, to
// blend over. Returns how many frames after `from` it can do that.
uint64_t Channel::DecodeSplice(uint64_t from) {
    const uint64_t begin = ring_.Written();
    for (;;) {
        DecodePiece(FramesOf(kFirstPieceMs, mixRate_));
        const uint64_t soonest = ring_.Taken() + FramesOf(kRejoinMarginMs, mixRate_);
        const uint64_t late = soonest > from ? soonest - from : 0;
        if (ring_.Written() >= begin + late + FrameRing::kSpliceFrames) return late;
        if (!sourceEnded_) continue;
        // After the end comes silence.
        const std::span<float> room = ring_.Writable(FramesOf(kFirstPieceMs, mixRate_));
        std::fill(room.begin(), room.end(), 0.0f);
        ring_.Commit(room.size() / kStereo);
        end_.store(ring_.Written());
    }
}

// The frames in the ring that can still be heard.
size_t Channel::FramesAhead() const {
    return ring_.Ahead(begin_.load());
}

// The number of frames to keep there.
size_t Channel::FullFrames() const {
    const bool plays = LoadControl().state == RunState::kPlaying;
    return FramesOf(plays ? aheadMs_ : std::max(kFirstPieceMs, preparedMs_.load()), mixRate_);
}

size_t Channel::FramesWanted() const {
    if (sourceEnded_) return 0;
    const size_t ahead = FramesAhead();
    const size_t full = FullFrames();
    const size_t piece = std::clamp(ahead, FramesOf(kFirstPieceMs, mixRate_), FramesOf(kPieceMs, mixRate_));
    return std::min(piece, full - std::min(full, ahead));
}

// Notes where the next frame lies if the source knows better than counting.
void Channel::MarkPlace() {
    const std::optional<SourcePlace> place = source_->Place();
    if (!place) return;
    const uint64_t taken = ring_.Taken();
    const std::lock_guard lock(mutex_);
    // Positions of more than a second ago are not asked for.
    while (marks_.size() > 1 && marks_[1].ring + mixRate_ < taken) marks_.erase(marks_.begin());
    marks_.push_back({ring_.Written(), 0, place->frame, place->pace});
}

size_t Channel::DecodePiece(size_t frames) {
    size_t done = 0;
    while (done < frames && !sourceEnded_) {
        const std::span<float> room = ring_.Writable(frames - done);
        if (room.empty()) break;
        MarkPlace();
        source_->SetAhead(FramesAhead());
        const SourceRead read = source_->Read(room.data(), room.size() / kStereo);
        MakeSane(room.data(), read.frames * kStereo, kLoudest);
        ring_.Commit(read.frames);
        done += read.frames;
        sourceEnded_ = read.atEnd;
        lacksInput_.store(read.frames == 0);
        if (read.frames == 0) break;
    }
    if (sourceEnded_) end_.store(ring_.Written());
    return done;
}

SteadyTime Channel::NextCall(SteadyTime now, bool progressed) const {
    const Control control = LoadControl();
    if (control.generation != decoding_.load()) return now;
    if (control.state == RunState::kPlaying && rejoinOrders_.load() != rejoined_.load()) return now + kRetry;
    const size_t ahead = FramesAhead();
    const size_t full = FullFrames();
    const bool isStill = control.state != RunState::kPlaying;
    if (sourceEnded_ || (isStill && (preparedMs_ == 0 || ahead >= full))) return SteadyTime::max();
    if (isStill) return progressed ? now : now + kRetry;
    if (ahead + FramesOf(kFirstPieceMs, mixRate_) < full) {
        const milliseconds untilRetry(ahead * 1000 / mixRate_ / kRetriesAhead);
        return progressed ? now : now + std::max(untilRetry, kRetry);
    }
    return now + milliseconds((ahead - full / 2) * 1000 / mixRate_);
}

}  // namespace hullrider
