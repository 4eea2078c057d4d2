// Everything between BASS_Init and BASS_Free: the output, the mixer, the decoder threads, and the objects behind
// handles. Callable from any thread but the callback.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "audio/decode_pool.h"
#include "audio/fonts.h"
#include "audio/mixer.h"
#include "audio/output.h"

namespace hullrider {

// A new handle; one sequence for all types, never reused while the program runs.
uint32_t NewHandle();

// Objects of one type by handle. A looked-up object stays alive while in use, even if it is freed meanwhile.
template <typename T>
class HandleTable {
public:
    uint32_t Add(std::shared_ptr<T> thing) {
        const uint32_t handle = NewHandle();
        const std::lock_guard lock(mutex_);
        things_.emplace(handle, std::move(thing));
        return handle;
    }
    std::shared_ptr<T> Find(uint32_t handle) const {
        const std::lock_guard lock(mutex_);
        const auto found = things_.find(handle);
        return found == things_.end() ? nullptr : found->second;
    }
    std::shared_ptr<T> Take(uint32_t handle) {
        const std::lock_guard lock(mutex_);
        const auto node = things_.extract(handle);
        return node.empty() ? nullptr : node.mapped();
    }
    template <typename Function>
    void ForEach(Function function) const {
        const std::lock_guard lock(mutex_);
        for (const auto& [handle, thing] : things_) function(thing);
    }

private:
    mutable std::mutex mutex_;
    std::map<uint32_t, std::shared_ptr<T>> things_;
};

class Engine {
public:
    explicit Engine(std::unique_ptr<Output> output);
    ~Engine();

    // False when the output cannot be started.
    bool Start();
    // Silences the output. Calls in progress may keep the rest alive a little longer.
    void Stop();

    uint32_t Rate() const { return mixer_.Rate(); }
    // The delay between taking a channel's frame and hearing it.
    uint32_t LatencyFrames() const { return output_->LatencyFrames() + mixer_.LatencyFrames(); }
    Output& TheOutput() { return *output_; }
    Mixer& TheMixer() { return mixer_; }
    DecodePool& Decoders() { return decoders_; }

    // 0 when there are too many channels.
    uint32_t AddChannel(std::shared_ptr<Channel> channel);
    // A channel that is neither mixed nor decoded ahead.
    uint32_t AddDecodingChannel(std::shared_ptr<Channel> channel) { return channels_.Add(std::move(channel)); }
    bool FreeChannel(uint32_t handle);
    const HandleTable<Channel>& Channels() const { return channels_; }

    HandleTable<const Font>& Fonts() { return fonts_; }
    FontList DefaultFonts() const;
    void SetDefaultFonts(const FontList& fonts);

    HandleTable<const std::string>& Plugins() { return plugins_; }

private:
    Mixer mixer_;
    HandleTable<Channel> channels_;
    HandleTable<const Font> fonts_;
    HandleTable<const std::string> plugins_;
    mutable std::mutex defaultFontsMutex_;
    FontList defaultFonts_;
    // Last, because its threads use the members above.
    DecodePool decoders_;
    std::unique_ptr<Output> output_;
};

// The running engine; null, with BASS_ERROR_INIT set for the calling thread, when there is none.
std::shared_ptr<Engine> CurrentEngine();

// Makes the engine current and starts it. False, with the error set, when there is one already or it does not start.
bool InstallEngine(std::unique_ptr<Output> output);
bool RemoveEngine();

}  // namespace hullrider
