// The effects of one channel in order: filters of this room and callers' procedures. Callers change it from any thread.
// The callback uses the newest chain and never waits; callers wait for it, for at most the one block in which it still
// uses what they removed.
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

// A filter or a procedure.
struct Effect {
    uint32_t handle = 0;
    int priority = 0;
    uint32_t type = 0;  // for a filter: one of the BASS_FX values
    std::shared_ptr<Filter> filter;
    DSPPROC* procedure = nullptr;
    void* user = nullptr;
    uint32_t channel = 0;  // passed to the procedure
};

class EffectRack {
public:
    // `channels`: 1 or 2, as procedures see them.
    EffectRack(uint32_t mixRate, uint32_t channels);
    ~EffectRack();
    EffectRack(const EffectRack&) = delete;
    EffectRack& operator=(const EffectRack&) = delete;

    // --- Callers.
    // Placed after all effects of its priority. False when the rack was closed.
    bool Add(const Effect& effect);
    // False when there is no such handle. A filter fades out. A procedure has returned from its last call when this
    // returns.
    bool RemoveFilter(uint32_t handle);
    bool RemoveProcedure(uint32_t handle);
    // The effect with that filter; one with handle 0 when there is none.
    Effect FindFilter(uint32_t handle) const;
    // Removes all effects for good.
    void Close();

    // --- Callback.
    // Runs all effects over `count` stereo frames, in place. `begins`: nothing was heard right before them.
    void Run(float* frames, size_t count, bool begins);

private:
    struct Chain {  // immutable once published
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
    std::vector<Effect> effects_;  // including removed filters that still fade out
    uint64_t edition_ = 0;
    bool closed_ = false;

    std::atomic<const Chain*> chain_;
    std::atomic<uint32_t> running_{0};  // odd while the callback uses a chain

    // Callback only.
    uint64_t heardEdition_ = 0;
    StepSmoother smoother_;
};

}  // namespace hullrider
