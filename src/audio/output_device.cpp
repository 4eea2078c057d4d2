#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "audio/bass.h"
#include "audio/block_clock.h"
#include "audio/miniaudio_setup.h"
#include "audio/mixer.h"
#include "audio/output.h"
#include "audio/quiet_backend.h"

namespace hullrider {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr uint32_t kPeriodMs = 25;
constexpr uint32_t kPeriods = 3;
constexpr uint32_t kMaxRate = 96000;            // the highest that every source can be rendered at
constexpr milliseconds kWatch(500);             // between two looks at the device
constexpr milliseconds kLost(1500);             // a device that has not asked for sound for so long is gone
constexpr milliseconds kRetry(2000);            // between two attempts to open one again
constexpr milliseconds kQuickOpening(300);      // most devices are open by then
constexpr milliseconds kLongestOpening(10000);  // then the attempt is given up
constexpr milliseconds kLongestClosing(2000);

// A sound device with a connection of its own to the sound system. Every call into that system may hang for ever when
// it goes away, so one thread, which nobody joins, makes them all, from the first to the last. It shares the object
// with whoever uses the device and keeps it for as long as the system may call back.
class LiveDevice {
public:
    enum class State { kOpening, kPlaying, kClosed };

    // Begins to open the default device, which then plays silence. `rate` 0: the device's own, so that nothing is
    // resampled twice, halved until it is no higher than kMaxRate. Without `backend` the best that there is.
    static std::shared_ptr<LiveDevice> BeginOpening(uint32_t rate, std::optional<ma_backend> backend);

    // Waits at most so long. A device that cannot be opened goes from kOpening to kClosed.
    State WaitWhileOpening(milliseconds longest);

    // What it is; only from when it plays.
    uint32_t Rate() const { return rate_; }
    ma_backend Backend() const { return backend_; }
    uint32_t LatencyFrames() const { return latencyFrames_; }
    const std::string& Name() const { return name_; }
    bool IsLost() const;

    void Feed(Mixer& mixer) { mixer_ = &mixer; }
    // The mixer is no longer called once this has returned. Waits at most so long for the device to be closed, which
    // otherwise happens later or never.
    void Close(milliseconds longest);

private:
    void Run();
    bool OpenContext();
    bool OpenDevice();
    bool InitDevice();
    void Describe();
    void PlayUntilClosing();
    void TakeMixerAway();
    static void OnData(ma_device* device, void* out, const void* in, ma_uint32 frames);

    // The device's own thread.
    ma_context context_;
    ma_device device_;

    // That thread until it plays, then anyone.
    uint32_t rate_ = 0;
    std::optional<ma_backend> wanted_;
    ma_backend backend_ = ma_backend_null;
    uint32_t latencyFrames_ = 0;
    std::string name_;

    std::atomic<Mixer*> mixer_{nullptr};
    std::atomic<bool> inCallback_{false};
    std::atomic<Clock::rep> lastAsked_{0};

    std::mutex mutex_;
    std::condition_variable changed_;
    State state_ = State::kOpening;
    bool closing_ = false;
};

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
            // Unlike ma_device_uninit this wakes a backend that waits for a server which is gone.
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
    changed_.wait(lock, [&] { return closing_; });
}

void LiveDevice::OnData(ma_device* device, void* out, const void*, ma_uint32 frames) {
    auto* self = static_cast<LiveDevice*>(device->pUserData);
    auto* samples = static_cast<float*>(out);
    self->lastAsked_ = Clock::now().time_since_epoch().count();
    // Before the mixer is looked at: whoever takes the mixer away then either sees this or is seen here.
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
    const Clock::time_point asked{Clock::duration(lastAsked_.load())};
    return Clock::now() - asked > kLost;
}

void LiveDevice::TakeMixerAway() {
    mixer_ = nullptr;
    // The mixer waits for nothing, so this is over in the time of a block.
    while (inCallback_) std::this_thread::sleep_for(milliseconds(1));
}

void LiveDevice::Close(milliseconds longest) {
    TakeMixerAway();
    std::unique_lock lock(mutex_);
    closing_ = true;
    changed_.notify_all();
    changed_.wait_for(lock, longest, [&] { return state_ == State::kClosed; });
}

// Follows the system's default device. While there is none, sound goes on unheard.
class DeviceOutput : public Output {
public:
    ~DeviceOutput() override { DeviceOutput::Stop(); }

    bool Open();

    uint32_t Rate() const override { return rate_; }
    bool Start(Mixer& mixer) override;
    void Stop() override;
    uint32_t LatencyFrames() const override { return latencyFrames_; }
    std::string Description() const override;

private:
    void Describe();
    void Watch();
    void LookAtDevice();
    void LoseDevice();
    void LookForDevice();
    bool BeginAttempt();
    void TakeNewDevice();

    uint32_t rate_ = 0;
    std::optional<ma_backend> backend_;
    Mixer* mixer_ = nullptr;
    std::atomic<uint32_t> latencyFrames_{0};

    // The watching thread only, while it runs.
    std::shared_ptr<LiveDevice> device_;      // null while there is none
    std::shared_ptr<LiveDevice> attempt_;     // one that is being opened
    std::unique_ptr<BlockClock> substitute_;  // keeps time while there is no device
    std::vector<float> unheard_;
    Clock::time_point attemptBegan_;

    mutable std::mutex mutex_;
    std::string name_;  // behind the mutex: another device may be opened
    std::condition_variable wake_;
    bool stopping_ = false;
    std::thread watcher_;
};

bool DeviceOutput::Open() {
    device_ = LiveDevice::BeginOpening(0, std::nullopt);
    if (device_->WaitWhileOpening(kLongestOpening) != LiveDevice::State::kPlaying) {
        device_->Close(milliseconds(0));
        device_.reset();
        return false;
    }
    rate_ = device_->Rate();
    // Another sound system would be a way around the server, and keep it from the hardware when it comes back.
    backend_ = device_->Backend();
    Describe();
    return true;
}

bool DeviceOutput::Start(Mixer& mixer) {
    mixer_ = &mixer;
    unheard_.resize(BlockClock::BlockFrames(rate_) * kStereo);
    device_->Feed(mixer);
    watcher_ = std::thread([this] { Watch(); });
    return true;
}

void DeviceOutput::Stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    if (watcher_.joinable()) watcher_.join();
    substitute_.reset();
    if (attempt_ != nullptr) attempt_->Close(milliseconds(0));
    if (device_ != nullptr) device_->Close(kLongestClosing);
    attempt_.reset();
    device_.reset();
}

void DeviceOutput::Describe() {
    latencyFrames_ = device_->LatencyFrames();
    const std::lock_guard lock(mutex_);
    name_ = device_->Name();
}

std::string DeviceOutput::Description() const {
    const std::lock_guard lock(mutex_);
    return name_ + ", " + std::to_string(rate_) + " Hz";
}

void DeviceOutput::Watch() {
    std::unique_lock lock(mutex_);
    while (!wake_.wait_for(lock, kWatch, [&] { return stopping_; })) {
        lock.unlock();
        LookAtDevice();
        lock.lock();
    }
}

void DeviceOutput::LookAtDevice() {
    if (device_ != nullptr && device_->IsLost()) LoseDevice();
    if (device_ == nullptr) LookForDevice();
}

void DeviceOutput::LoseDevice() {
    device_->Close(milliseconds(0));
    device_.reset();
    substitute_ = std::make_unique<BlockClock>(rate_, [this] {
        const size_t frames = BlockClock::BlockFrames(rate_);
        mixer_->Render(unheard_.data(), frames);
        return BlockClock::Block{frames, false};
    });
    attemptBegan_ = Clock::now() - kRetry;
}

void DeviceOutput::LookForDevice() {
    if (attempt_ == nullptr && !BeginAttempt()) return;
    switch (attempt_->WaitWhileOpening(kQuickOpening)) {
        case LiveDevice::State::kPlaying:
            TakeNewDevice();
            break;
        case LiveDevice::State::kClosed:
            attempt_.reset();
            break;
        case LiveDevice::State::kOpening:
            if (Clock::now() - attemptBegan_ < kLongestOpening) break;
            attempt_->Close(milliseconds(0));
            attempt_.reset();
            break;
    }
}

bool DeviceOutput::BeginAttempt() {
    if (Clock::now() - attemptBegan_ < kRetry) return false;
    attemptBegan_ = Clock::now();
    attempt_ = LiveDevice::BeginOpening(rate_, backend_);
    return true;
}

void DeviceOutput::TakeNewDevice() {
    device_ = std::move(attempt_);
    Describe();
    substitute_.reset();
    device_->Feed(*mixer_);
}

}  // namespace

std::unique_ptr<Output> OpenDeviceOutput(int& error) {
    auto output = std::make_unique<DeviceOutput>();
    error = output->Open() ? BASS_OK : BASS_ERROR_DRIVER;
    if (error != BASS_OK) return nullptr;
    return output;
}

}  // namespace hullrider
