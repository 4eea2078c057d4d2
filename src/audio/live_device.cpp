#include "audio/live_device.h"

#include <algorithm>
#include <thread>

#include "audio/mixer.h"
#include "audio/quiet_backend.h"

namespace hullrider {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr uint32_t kPeriodMs = 25;
constexpr uint32_t kPeriods = 3;
constexpr uint32_t kMaxRate = 96000;  // the highest that every source can be rendered at
constexpr milliseconds kLost(1500);   // a device that asks for no sound for this long is gone

}  // namespace

std::shared_ptr<LiveDevice> LiveDevice::BeginOpening(uint32_t rate, std::optional<ma_backend> backend) {
    auto device = std::make_shared<LiveDevice>();
    device->rate_ = rate;
    device->wanted_ = backend;
    std::thread([device] { device->Run(); }).detach();
    return device;
}

void LiveDevice::Run() {
    if (OpenContext()) {
        if (OpenDevice()) {
            if (ma_device_start(&device_) == MA_SUCCESS) PlayUntilClosing();
            // Unlike ma_device_uninit, this wakes a backend that waits for a dead server.
            ma_device_stop(&device_);
            ma_device_uninit(&device_);
        }
        ma_context_uninit(&context_);
    }
    const std::lock_guard lock(mutex_);
    state_ = State::kClosed;
    changed_.notify_all();
}

bool LiveDevice::OpenContext() {
    ma_context_config config = ma_context_config_init();
    config.pulse.pApplicationName = "Hullrider Radio";
    const ma_backend* const only = wanted_ ? &*wanted_ : nullptr;
    if (ma_context_init(only, only == nullptr ? 0 : 1, &config, &context_) != MA_SUCCESS) return false;
    QuietBackend(context_);
    return true;
}

bool LiveDevice::OpenDevice() {
    if (!InitDevice()) return false;
    rate_ = device_.sampleRate;
    while (rate_ > kMaxRate) rate_ /= 2;
    if (rate_ != device_.sampleRate) {
        ma_device_uninit(&device_);
        if (!InitDevice()) return false;
    }
    Describe();
    return true;
}

bool LiveDevice::InitDevice() {
    ma_device_config config = ma_device_config_init(ma_device_type_playback);
    config.playback.format = ma_format_f32;
    config.playback.channels = kStereo;
    config.sampleRate = rate_;
    config.periodSizeInMilliseconds = kPeriodMs;
    config.periods = kPeriods;
    config.noPreSilencedOutputBuffer = MA_TRUE;
    // The system's own class for sound, so that a game does not starve it.
    config.wasapi.usage = ma_wasapi_usage_pro_audio;
    config.dataCallback = OnData;
    config.pUserData = this;
    return ma_device_init(&context_, &config, &device_) == MA_SUCCESS;
}

void LiveDevice::Describe() {
    backend_ = context_.backend;
    char name[MA_MAX_DEVICE_NAME_LENGTH + 1] = "";
    ma_device_get_name(&device_, ma_device_type_playback, name, sizeof name, nullptr);
    name_ = std::string(name) + " (" + ma_get_backend_name(backend_) + ")";
    const uint64_t bufferFrames =
        uint64_t{device_.playback.internalPeriodSizeInFrames} * device_.playback.internalPeriods;
    const uint32_t internalRate = device_.playback.internalSampleRate;
    latencyFrames_ = internalRate == 0 ? 0 : static_cast<uint32_t>(bufferFrames * rate_ / internalRate);
}

void LiveDevice::PlayUntilClosing() {
    lastAsked_ = Clock::now().time_since_epoch().count();
    std::unique_lock lock(mutex_);
    state_ = State::kPlaying;
    changed_.notify_all();
    bool resting = false;
    while (!closing_) {
        if (resting == toRest_) {
            changed_.wait(lock);
            continue;
        }
        resting = toRest_;
        lock.unlock();
        // A device that does not restart asks for no sound either, and is then found to be lost.
        resting ? ma_device_stop(&device_) : ma_device_start(&device_);
        lock.lock();
    }
}

void LiveDevice::Rest() {
    const std::lock_guard lock(mutex_);
    toRest_ = true;
    changed_.notify_all();
}

void LiveDevice::Wake() {
    const std::lock_guard lock(mutex_);
    lastAsked_ = Clock::now().time_since_epoch().count();
    toRest_ = false;
    changed_.notify_all();
}

void LiveDevice::OnData(ma_device* device, void* out, const void*, ma_uint32 frames) {
    auto* self = static_cast<LiveDevice*>(device->pUserData);
    auto* samples = static_cast<float*>(out);
    self->lastAsked_ = Clock::now().time_since_epoch().count();
    // Set before reading the mixer: whoever removes the mixer either sees this or is seen here.
    self->inCallback_ = true;
    if (Mixer* const mixer = self->mixer_) {
        mixer->Render(samples, frames);
    } else {
        std::fill_n(samples, size_t{frames} * kStereo, 0.0f);
    }
    self->inCallback_ = false;
}

LiveDevice::State LiveDevice::WaitWhileOpening(milliseconds longest) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, longest, [&] { return state_ != State::kOpening; });
    return state_;
}

bool LiveDevice::IsLost() const {
    const std::lock_guard lock(mutex_);
    if (toRest_) return false;
    const Clock::time_point asked{Clock::duration(lastAsked_.load())};
    return Clock::now() - asked > kLost;
}

void LiveDevice::TakeMixerAway() {
    mixer_ = nullptr;
    // The mixer never waits, so this ends within a block.
    while (inCallback_) std::this_thread::sleep_for(milliseconds(1));
}

void LiveDevice::Close(milliseconds longest) {
    TakeMixerAway();
    std::unique_lock lock(mutex_);
    closing_ = true;
    changed_.notify_all();
    changed_.wait_for(lock, longest, [&] { return state_ == State::kClosed; });
}

}  // namespace hullrider
