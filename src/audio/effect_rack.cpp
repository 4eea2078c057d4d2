#include "audio/effect_rack.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "audio/sane.h"

namespace hullrider {

namespace {

void ToMono(float* frames, size_t count) {
    for (size_t i = 0; i < count; i++) frames[i] = (frames[i * kStereo] + frames[i * kStereo + 1]) * 0.5f;
}

void ToStereo(float* frames, size_t count) {
    for (size_t i = count; i-- > 0;) frames[i * kStereo] = frames[i * kStereo + 1] = frames[i];
}

}  // namespace

EffectRack::EffectRack(uint32_t mixRate, uint32_t channels)
    : mixRate_(mixRate), channels_(channels), chain_(new Chain), smoother_(mixRate) {}

EffectRack::~EffectRack() {
    delete chain_.load();
}

std::vector<Effect>::const_iterator EffectRack::Find(uint32_t handle) const {
    return std::find_if(effects_.begin(), effects_.end(), [&](const Effect& effect) {
        return effect.handle == handle && !(effect.filter != nullptr && effect.filter->IsLeaving());
    });
}

// Under the mutex. Returns the previous chain, which the caller releases once the mutex is free.
std::unique_ptr<const EffectRack::Chain> EffectRack::Publish() {
    return std::unique_ptr<const Chain>(chain_.exchange(new Chain{effects_, edition_}));
}

// If the callback is running, it either started before the exchange and is waited for, or sees the new chain: these
// accesses are in one total order.
void EffectRack::LetGo(std::unique_ptr<const Chain> old) const {
    constexpr int kImpatient = 100;
    const uint32_t seen = running_.load();
    for (int tries = 0; seen % 2 != 0 && running_.load() == seen; tries++) {
        if (tries < kImpatient) {
            std::this_thread::yield();
        } else {
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
    }
    old.reset();
}

bool EffectRack::Add(const Effect& effect) {
    std::unique_lock lock(mutex_);
    if (closed_) return false;
    // Filters that have faded out are removed with the next change; until then they cost nothing.
    std::erase_if(effects_, [](const Effect& old) {
        return old.filter != nullptr && old.filter->IsLeaving() && old.filter->IsResting();
    });
    const auto place = std::find_if(effects_.begin(), effects_.end(),
                                    [&](const Effect& other) { return other.priority < effect.priority; });
    effects_.insert(place, effect);
    if (effect.procedure != nullptr) edition_++;
    std::unique_ptr<const Chain> old = Publish();
    lock.unlock();
    LetGo(std::move(old));
    return true;
}

bool EffectRack::RemoveFilter(uint32_t handle) {
    const std::lock_guard lock(mutex_);
    const auto found = Find(handle);
    if (found == effects_.end() || found->filter == nullptr) return false;
    found->filter->Leave();
    return true;
}

bool EffectRack::RemoveProcedure(uint32_t handle) {
    std::unique_lock lock(mutex_);
    const auto found = Find(handle);
    if (found == effects_.end() || found->procedure == nullptr) return false;
    effects_.erase(found);
    edition_++;
    std::unique_ptr<const Chain> old = Publish();
    lock.unlock();
    LetGo(std::move(old));
    return true;
}

Effect EffectRack::FindFilter(uint32_t handle) const {
    const std::lock_guard lock(mutex_);
    const auto found = Find(handle);
    return found == effects_.end() || found->filter == nullptr ? Effect() : *found;
}

void EffectRack::Close() {
    std::unique_lock lock(mutex_);
    closed_ = true;
    if (!effects_.empty()) edition_++;  // filters stop as well
    effects_.clear();
    std::unique_ptr<const Chain> old = Publish();
    lock.unlock();
    LetGo(std::move(old));
}

void EffectRack::Run(float* frames, size_t count, bool begins) {
    const uint32_t before = running_.load(std::memory_order_relaxed);
    running_.store(before + 1);
    RunChain(*chain_.load(), frames, count, begins);
    running_.store(before + 2);
}

// A procedure that comes or goes cannot be faded, because a removed one is not called again.
void EffectRack::RunChain(const Chain& chain, float* frames, size_t count, bool begins) {
    for (const Effect& effect : chain.effects) {
        if (effect.procedure != nullptr) {
            RunProcedure(effect, frames, count);
        } else {
            if (begins) effect.filter->Begin();
            effect.filter->Run(frames, count);
        }
    }
    if (begins) {
        smoother_.Forget();
    } else if (chain.edition != heardEdition_) {
        smoother_.Join(frames);
    }
    heardEdition_ = chain.edition;
    smoother_.Apply(frames, count);
}

void EffectRack::RunProcedure(const Effect& effect, float* frames, size_t count) const {
    if (channels_ == 1) ToMono(frames, count);
    const size_t samples = count * channels_;
    effect.procedure(effect.handle, effect.channel, frames, static_cast<uint32_t>(samples * sizeof(float)),
                     effect.user);
    MakeSane(frames, samples, kLoudestEffect);
    if (channels_ == 1) ToStereo(frames, count);
}

}  // namespace hullrider
