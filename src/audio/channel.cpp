#include "audio/channel.h"

#include <algorithm>

#include "audio/bass.h"

namespace hullrider {

namespace {

// Two seconds ahead, and some room for the first piece after a seek beside the frames that the seek makes void.
size_t RingFrames(uint32_t mixRate) {
    return size_t{mixRate} * 5 / 2;
}

SourceFormat Folded(SourceFormat format) {
    format.channels = std::min<uint32_t>(format.channels, kStereo);
    return format;
}

uint64_t NextNumber() {
    static std::atomic<uint64_t> last{0};
    return last.fetch_add(1) + 1;
}

}  // namespace

Channel::Channel(std::unique_ptr<Source> source, const SourceRequest& request, uint32_t flags, uint32_t frees)
    : number_(NextNumber()),
      source_(std::move(source)),
      format_(Folded(source_->Format())),
      tags_(source_->Tags()),
      path_(request.path),
      flags_(flags),
      frees_(frees),
      mixRate_(request.mixRate),
      aheadMs_(source_->AheadMs()),
      refillFrames_(size_t{request.mixRate} * source_->RefillMs() / 1000),
      ring_(RingFrames(request.mixRate)),
      effects_(request.mixRate, format_.channels),
      volume_(request.mixRate),
      level_(request.mixRate),
      control_(Pack({1, RunState::kStopped})),
      rampIn_(request.mixRate),
      rampOut_(request.mixRate) {}

uint64_t Channel::Pack(Control control) {
    return control.generation << 2 | static_cast<uint64_t>(control.state);
}

Channel::Control Channel::Unpack(uint64_t word) {
    return {word >> 2, static_cast<RunState>(word & 3)};
}

// The callback may end the channel at the same moment; then the end stands.
void Channel::ChangeState(RunState state) {
    uint64_t word = control_.load();
    do {
        if (Unpack(word).state == RunState::kEnded) return;
    } while (!control_.compare_exchange_weak(word, Pack({Unpack(word).generation, state})));
}

void Channel::BeginGeneration(int64_t frame, RunState state) {
    seekFrame_ = frame;
    control_.store(Pack({LoadControl().generation + 1, state}));
}

// Nothing was taken yet of a generation that begins at the source's start.
bool Channel::IsFresh() const {
    if (seekFrame_ != 0) return false;
    return ready_.load() != LoadControl().generation || ring_.Taken() <= begin_.load();
}

void Channel::Play(bool restart) {
    const std::lock_guard lock(mutex_);
    if (freed_) return;
    starved_.store(false);
    if (LoadControl().state != RunState::kPlaying) resumedAt_ = ring_.Taken();
    if (LoadControl().state == RunState::kEnded || (restart && !IsFresh())) {
        BeginGeneration(0, RunState::kPlaying);
    } else {
        ChangeState(RunState::kPlaying);
    }
}

bool Channel::Pause() {
    const std::lock_guard lock(mutex_);
    if (LoadControl().state != RunState::kPlaying) return false;
    ChangeState(RunState::kPaused);
    return true;
}

void Channel::Stop() {
    const std::lock_guard lock(mutex_);
    ChangeState(RunState::kStopped);
}

RunState Channel::State() const {
    return LoadControl().state;
}

void Channel::SetPosition(int64_t frame) {
    const std::lock_guard lock(mutex_);
    const RunState state = LoadControl().state;
    BeginGeneration(frame, state == RunState::kEnded ? RunState::kStopped : state);
}

int64_t Channel::Position(uint32_t latencyFrames) const {
    const std::lock_guard lock(mutex_);
    const Control control = LoadControl();
    if (ready_.load() != control.generation) return seekFrame_;
    const uint64_t taken = ring_.Taken();
    // The output's frames were not heard yet; none of them are from before a pause.
    const uint64_t sinceResumed = taken - std::min(taken, resumedAt_);
    const uint64_t latency = control.state == RunState::kPlaying ? std::min<uint64_t>(latencyFrames, sinceResumed) : 0;
    return source_->Fold(static_cast<int64_t>(OwnFrameAt(taken, latency) + 0.5));
}

// The source frame being heard when the callback has taken up to `taken` and its last frame will be heard in `latency`
// frames.
double Channel::OwnFrameAt(uint64_t taken, uint64_t latency) const {
    uint64_t behind = latency;
    auto mark = marks_.rbegin();
    for (; mark + 1 != marks_.rend(); ++mark) {
        if (taken >= mark->ring && taken - mark->ring >= behind) break;
        // Before the mark: as far back, but not through skipped frames.
        if (taken < mark->ring) continue;
        behind -= taken - mark->ring;
        taken = mark->ring - mark->skipped;
    }
    const uint64_t begun = std::max(taken, mark->ring) - mark->ring;
    return mark->own + static_cast<double>(begun - std::min(begun, behind)) * mark->pace;
}

bool Channel::SetFonts(const FontList& fonts, uint32_t latencyFrames) {
    const bool wasSilent = source_->LacksFonts();
    if (!source_->SetFonts(fonts)) return false;
    // A stopped channel has no sound to continue without a gap: it is prepared afresh.
    if (wasSilent || State() == RunState::kStopped) {
        SetPosition(Position(latencyFrames));
    } else {
        rejoinOrders_.fetch_add(1);
    }
    return true;
}

void Channel::SetLoop(bool loop) {
    source_->SetLoop(loop);
    flags_ = loop ? flags_ | BASS_SAMPLE_LOOP : flags_ & ~BASS_SAMPLE_LOOP;
}

bool Channel::IsPrepared() const {
    if (ready_.load() != LoadControl().generation) return false;
    const size_t wanted = size_t{mixRate_} * preparedMs_ / 1000;
    return end_.load() != kNoEnd || FramesAhead() >= std::min(wanted, ring_.Capacity());
}

bool Channel::WaitUntilPrepared() {
    std::unique_lock lock(mutex_);
    // Polls, because a notification is sent without the mutex and may be missed.
    while (!freed_ && !IsPrepared()) decodedMore_.wait_for(lock, std::chrono::milliseconds(20));
    return !freed_ && FramesAhead() > 0;
}

std::vector<StereoPeak> Channel::PeaksAhead(size_t spanFrames) const {
    std::vector<StereoPeak> peaks(FramesAhead() / spanFrames);
    std::vector<float> span(spanFrames * kStereo);
    uint64_t from = std::max(begin_.load(), ring_.Taken());
    for (StereoPeak& peak : peaks) {
        ring_.Copy(from, spanFrames, span.data());
        peak = PeakOf(span.data(), spanFrames);
        from += spanFrames;
    }
    return peaks;
}

bool Channel::ReadyFor(size_t frames) const {
    const Control control = LoadControl();
    if (control.state != RunState::kPlaying) return true;
    if (refillFrames_ > 0 && lacksInput_.load()) return true;  // time goes on while it waits for the network
    if (ready_.load() != control.generation || WantsRejoin()) return false;
    return end_.load() != kNoEnd || ring_.Ahead(begin_.load()) >= std::max(frames, refillFrames_);
}

}  // namespace hullrider
