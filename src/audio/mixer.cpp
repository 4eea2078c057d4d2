#include "audio/mixer.h"

#include <algorithm>
#include <cmath>

#include "audio/channel.h"

namespace hullrider {

namespace {

constexpr float kDecaySeconds = 0.0005f;  // time constant
constexpr float kInaudible = 1e-5f;

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kLongestFall(3000);  // for an output that asks for no blocks

}  // namespace

Mixer::Mixer(uint32_t rate, bool limited)
    : rate_(rate),
      decay_(std::exp(-1.0f / (kDecaySeconds * static_cast<float>(rate)))),
      channels_(kMaxChannels),
      rampOut_(rate) {
    if (limited) limiter_.emplace(rate);
}

bool Mixer::Add(std::shared_ptr<Channel> channel) {
    const std::lock_guard lock(mutex_);
    const auto isFree = [](const Slot& slot) { return slot.channel.load() == nullptr; };
    auto place = std::find_if(slots_.begin(), slots_.end(), isFree);
    if (place == slots_.end()) {
        // A removed channel that is still falling silent must make room.
        const auto falling = std::find_if(removed_.begin(), removed_.end(), [](const Removed& r) { return r.slot; });
        if (falling == removed_.end()) return false;
        place = slots_.begin() + static_cast<ptrdiff_t>(*falling->slot);
        LeaveSlot(*falling);
    }
    place->channel.store(channel.get());
    channels_[static_cast<size_t>(place - slots_.begin())] = std::move(channel);
    return true;
}

void Mixer::Remove(const std::shared_ptr<Channel>& channel) {
    const std::lock_guard lock(mutex_);
    const auto place = std::find(channels_.begin(), channels_.end(), channel);
    if (place == channels_.end()) return;
    const auto slot = static_cast<size_t>(place - channels_.begin());
    removed_.push_back({std::move(*place), slot, 0, Clock::now()});
    if (!channel->IsHeard()) LeaveSlot(removed_.back());
}

// A block that begins after this cannot see the channel: these accesses are in one total order.
void Mixer::LeaveSlot(Removed& removed) {
    slots_[*removed.slot].channel.store(nullptr);
    removed.slot.reset();
    removed.begun = begun_.load();
}

bool Mixer::Collect() {
    std::vector<Removed> done;  // destroyed after the lock is released
    const std::lock_guard lock(mutex_);
    for (Removed& removed : removed_) {
        const bool silent = !removed.channel->IsHeard() || Clock::now() - removed.since > kLongestFall;
        if (removed.slot && silent) LeaveSlot(removed);
    }
    const uint64_t ended = ended_.load();
    const auto inUse = [&](const Removed& removed) { return removed.slot || removed.begun > ended; };
    const auto firstDone = std::partition(removed_.begin(), removed_.end(), inUse);
    std::move(firstDone, removed_.end(), std::back_inserter(done));
    removed_.erase(firstDone, removed_.end());
    return removed_.empty();
}

void Mixer::Render(float* out, size_t frames) {
    if (rendering_.test_and_set(std::memory_order_acquire)) {
        std::fill_n(out, frames * kStereo, 0.0f);
        return;
    }
    begun_.fetch_add(1);
    while (frames > 0) {
        const size_t now = std::min(frames, kBlockFrames);
        RenderBlock(out, now);
        out += now * kStereo;
        frames -= now;
    }
    ended_.fetch_add(1);
    rendering_.clear(std::memory_order_release);
}

void Mixer::RenderBlock(float* out, size_t frames) {
    std::fill_n(out, frames * kStereo, 0.0f);
    const float left = restLeft_, right = restRight_;
    restLeft_ = restRight_ = 0.0f;
    LetDecay(left, right, out, frames);
    bool playing = false;
    for (Slot& slot : slots_) playing |= RenderSlot(slot, out, frames);
    playing_ = playing;
    if (limiter_.has_value()) limiter_->Run(out, frames);
    if (falling_) LetFall(out, frames);
}

void Mixer::LetFall(float* out, size_t frames) {
    const size_t sounding = std::min(frames, rampOut_.Left());
    rampOut_.Apply(out, sounding);
    std::fill_n(out + sounding * kStereo, (frames - sounding) * kStereo, 0.0f);
    silent_ = rampOut_.Left() == 0;
}

// True when the slot's channel needs output time. Where a channel breaks off (paused, freed, moved, out of data), its
// last value decays, because a step would click.
bool Mixer::RenderSlot(Slot& slot, float* out, size_t frames) {
    Channel* channel = slot.channel.load();
    const uint64_t number = channel == nullptr ? 0 : channel->Number();
    if (number != slot.heard) {
        LetDecay(slot.left, slot.right, out, frames);
        slot.heard = number;
        slot.left = slot.right = 0.0f;
    }
    if (channel == nullptr) return false;
    const bool plays = channel->State() == RunState::kPlaying;
    const Sounded sounded = channel->Render(scratch_.data(), out, frames);
    if (sounded.lacking > 0) lacked_.fetch_add(sounded.lacking);
    if (sounded.frames == 0 || sounded.begins) LetDecay(slot.left, slot.right, out, frames);
    if (sounded.frames > 0 && sounded.frames < frames) {
        LetDecay(sounded.left, sounded.right, out + sounded.frames * kStereo, frames - sounded.frames);
    }
    const bool whole = sounded.frames == frames;
    slot.left = whole ? sounded.left : 0.0f;
    slot.right = whole ? sounded.right : 0.0f;
    return plays || channel->IsSliding();
}

void Mixer::LetDecay(float left, float right, float* out, size_t frames) {
    for (size_t i = 0; i < frames; i++) {
        if (std::fabs(left) < kInaudible && std::fabs(right) < kInaudible) return;
        left *= decay_;
        right *= decay_;
        out[i * kStereo] += left;
        out[i * kStereo + 1] += right;
    }
    restLeft_ += left;
    restRight_ += right;
}

}  // namespace hullrider
