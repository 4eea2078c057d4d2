// A sound device with its own connection to the sound system. Every call into that system may hang forever when it goes
// away, so one detached thread makes them all, from first to last. It shares ownership of the object with the device's
// user, for as long as the system may call back.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "audio/miniaudio_setup.h"

namespace hullrider {

class Mixer;

class LiveDevice {
public:
    enum class State { kOpening, kPlaying, kClosed };

    // Starts opening the default device, which then plays silence. `rate` 0 means the device's own, halved until it is
    // at most 96 kHz, so that nothing is resampled twice. Without `backend`, the best available one.
    static std::shared_ptr<LiveDevice> BeginOpening(uint32_t rate, std::optional<ma_backend> backend);

    // Waits for at most `longest`. A device that cannot be opened goes from kOpening to kClosed.
    State WaitWhileOpening(std::chrono::milliseconds longest);

    // The actual properties, valid once it plays.
    uint32_t Rate() const { return rate_; }
    ma_backend Backend() const { return backend_; }
    uint32_t LatencyFrames() const { return latencyFrames_; }
    const std::string& Name() const { return name_; }
    bool IsLost() const;

    void Feed(Mixer& mixer) { mixer_ = &mixer; }
    // Any thread: a resting device asks for no sound and costs nothing. Both take effect soon after.
    void Rest();
    void Wake();
    // The mixer is no longer called once this has returned. Waits for at most `longest` until the device is closed;
    // otherwise that happens later or never.
    void Close(std::chrono::milliseconds longest);

private:
    void Run();
    bool OpenContext();
    bool OpenDevice();
    bool InitDevice();
    void Describe();
    void PlayUntilClosing();
    void TakeMixerAway();
    static void OnData(ma_device* device, void* out, const void* in, ma_uint32 frames);

    // Device thread only.
    ma_context context_;
    ma_device device_;

    // Device thread until it plays, then any.
    uint32_t rate_ = 0;
    std::optional<ma_backend> wanted_;
    ma_backend backend_ = ma_backend_null;
    uint32_t latencyFrames_ = 0;
    std::string name_;

    std::atomic<Mixer*> mixer_{nullptr};
    std::atomic<bool> inCallback_{false};
    std::atomic<std::chrono::steady_clock::rep> lastAsked_{0};

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    State state_ = State::kOpening;
    bool closing_ = false;
    bool toRest_ = false;
};

}  // namespace hullrider
