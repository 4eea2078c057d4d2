// The effects of one channel in their order: filters of this room and procedures of its callers. Callers change it from
// any thread; the callback runs the newest order and never waits for them. They wait for it instead, at most for the
// one block in which it still uses what they took away.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "audio/bass.h"
#include "audio/declick.h"
#include "audio/filter.h"

namespace hullrider {

// Either a filter or a procedure.
struct Effect {
    uint32_t handle = 0;
    int priority = 0;
    uint32_t type = 0;  // of a filter: one of the BASS_FX values
    std::shared_ptr<Filter> filter;
    DSPPROC* procedure = nullptr;
    void* user = nullptr;
    uint32_t channel = 0;  // what the procedure is told
};

class EffectRack {
public:
    // `channels`: 1 or 2, those that procedures see.
    EffectRack(uint32_t mixRate, uint32_t channels);
    ~EffectRack();
    EffectRack(const EffectRack&) = delete;
    EffectRack& operator=(const EffectRack&) = delete;

    // --- Callers.
    // After all effects of its priority. False when the rack was closed.
    bool Add(const Effect& effect);
    // False when there is none of that handle. A filter fades out; a procedure has been called for the last time, and
    // has returned, once this returns.
    bool RemoveFilter(uint32_t handle);
    bool RemoveProcedure(uint32_t handle);
    // The effect with that filter, or one of handle 0.
    Effect FindFilter(uint32_t handle) const;
    // Removes all, for good.
    void Close();

    // --- Callback.
    // Runs all effects over `count` stereo frames, in place. `begins`: nothing was heard just before them.
    void Run(float* frames, size_t count, bool begins);

private:
    struct Chain {  // never changed once it is published
        std::vector<Effect> effects;
        uint64_t edition = 0;  // changes when a procedure comes or goes
    };
    std::vector<Effect>::const_iterator Find(uint32_t handle) const;
    std::unique_ptr<const Chain> Publish();
    void LetGo(std::unique_ptr<const Chain> old) const;
    void RunChain(const Chain& chain, float* frames, size_t count, bool begins);
    void RunProcedure(const Effect& effect, float* frames, size_t count) const;

    uint32_t mixRate_, channels_;

    mutable std::mutex mutex_;     // callers only
    std::vector<Effect> effects_;  // with filters that were removed and still fade out
    uint64_t edition_ = 0;
    bool closed_ = false;

    std::atomic<const Chain*> chain_;
    std::atomic<uint32_t> running_{0};  // odd while the callback uses a chain

    // Callback only.
    uint64_t heardEdition_ = 0;
    StepSmoother smoother_;
};

}  // namespace hullrider
