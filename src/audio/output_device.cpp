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
#include "audio/live_device.h"
#include "audio/mixer.h"
#include "audio/output.h"

namespace hullrider {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kWatch(500);             // between two checks of the device
constexpr milliseconds kRetry(2000);            // between two attempts to reopen one
constexpr milliseconds kQuickOpening(300);      // most devices are open by then
constexpr milliseconds kLongestOpening(10000);  // then the attempt is abandoned
constexpr milliseconds kLongestFall(150);       // until it asks for another block
constexpr milliseconds kHeldAtMost(1000);       // no device buffers more sound than this
constexpr milliseconds kLongestClosing(2000);
constexpr std::chrono::seconds kIdle(10);  // with nothing to play, until the device rests

// Follows the system's default device. Without one, time goes on silently.
class DeviceOutput : public Output {
public:
    ~DeviceOutput() override { DeviceOutput::Stop(); }

    bool Open();

    uint32_t Rate() const override { return rate_; }
    bool Start(Mixer& mixer) override;
    void Stop() override;
    uint32_t LatencyFrames() const override { return latencyFrames_; }
    void Hasten() override;
    std::string Description() const override;

private:
    void FallSilent();
    void Describe();
    void Watch();
    void LookAtDevice();
    bool IsIdle() const;
    void LetRest();
    void LoseDevice();
    void LookForDevice();
    bool BeginAttempt();
    void TakeNewDevice();

    uint32_t rate_ = 0;
    std::optional<ma_backend> backend_;
    Mixer* mixer_ = nullptr;
    std::atomic<uint32_t> latencyFrames_{0};
    std::atomic<Clock::rep> lastNeed_{0};  // when something last played or changed audibly
    std::atomic<bool> resting_{false};

    // Used by the watching thread only, while it runs.
    std::shared_ptr<LiveDevice> device_;      // null when there is none
    std::shared_ptr<LiveDevice> attempt_;     // being opened
    std::unique_ptr<BlockClock> substitute_;  // keeps time when there is no device
    std::vector<float> unheard_;
    Clock::time_point attemptBegan_;

    mutable std::mutex mutex_;
    std::string name_;  // under the mutex: another device may be opened
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
    // Another backend would bypass the server and block its return.
    backend_ = device_->Backend();
    Describe();
    return true;
}

bool DeviceOutput::Start(Mixer& mixer) {
    mixer_ = &mixer;
    unheard_.resize(BlockClock::BlockFrames(rate_) * kStereo);
    device_->Feed(mixer);
    lastNeed_ = Clock::now().time_since_epoch().count();
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
    FallSilent();
    substitute_.reset();
    if (attempt_ != nullptr) attempt_->Close(milliseconds(0));
    if (device_ != nullptr) device_->Close(kLongestClosing);
    attempt_.reset();
    device_.reset();
}

// A device that is closed drops its buffered sound, which would click.
void DeviceOutput::FallSilent() {
    if (mixer_ == nullptr || device_ == nullptr || resting_) return;
    const Clock::time_point needed{Clock::duration(lastNeed_.load())};
    if (!mixer_->Playing() && Clock::now() - needed > kHeldAtMost) return;
    mixer_->FallSilent();
    const Clock::time_point patience = Clock::now() + kLongestFall;
    while (!mixer_->IsSilent() && Clock::now() < patience) std::this_thread::sleep_for(milliseconds(2));
    if (mixer_->IsSilent()) std::this_thread::sleep_for(milliseconds(latencyFrames_ * 1000 / rate_));
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
    for (;;) {
        wake_.wait_for(lock, kWatch, [&] { return stopping_; });
        if (stopping_) return;
        lock.unlock();
        LookAtDevice();
        if (mixer_->Playing()) lastNeed_ = Clock::now().time_since_epoch().count();
        if (device_ != nullptr && IsIdle()) LetRest();
        lock.lock();
    }
}

void DeviceOutput::LookAtDevice() {
    if (device_ != nullptr && device_->IsLost()) LoseDevice();
    if (device_ == nullptr) LookForDevice();
}

bool DeviceOutput::IsIdle() const {
    const Clock::time_point needed{Clock::duration(lastNeed_.load())};
    return Clock::now() - needed > kIdle;
}

// A running device keeps the sound system busy, and some computers awake.
void DeviceOutput::LetRest() {
    resting_ = true;
    device_->Rest();
    std::unique_lock lock(mutex_);
    wake_.wait(lock, [&] { return stopping_ || !IsIdle(); });
    if (stopping_) return;
    resting_ = false;
    device_->Wake();
}

void DeviceOutput::Hasten() {
    lastNeed_ = Clock::now().time_since_epoch().count();
    // The thread that rests the device checks this time after setting the flag.
    if (!resting_) return;
    const std::lock_guard lock(mutex_);
    wake_.notify_all();
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
