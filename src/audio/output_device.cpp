#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <optional>
#include <thread>
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
constexpr uint32_t kMaxRate = 96000;  // the highest that every source can be rendered at
constexpr milliseconds kWatch(500);   // between two looks at the device
constexpr milliseconds kLost(1500);   // a device that has not asked for sound for so long is gone
constexpr milliseconds kRetry(2000);  // between two attempts to open one again

// Follows the system's default device. While there is none, sound goes on unheard.
class DeviceOutput : public Output {
public:
    ~DeviceOutput() override;

    bool Open();

    uint32_t Rate() const override { return rate_; }
    bool Start(Mixer& mixer) override;
    void Stop() override;
    uint32_t LatencyFrames() const override { return latencyFrames_; }
    std::string Description() const override;

private:
    bool OpenDevice(uint32_t rate);
    void CloseDevice();
    bool StartDevice();
    void Watch();
    void LookAtDevice();
    bool IsLost() const;
    static void OnData(ma_device* device, void* out, const void* in, ma_uint32 frames);

    std::optional<ma_context> context_;
    ma_device device_;
    bool open_ = false;
    uint32_t rate_ = 0;
    std::atomic<uint32_t> latencyFrames_{0};
    std::atomic<Mixer*> mixer_{nullptr};
    std::atomic<Clock::rep> lastAsked_{0};

    // The watching thread only, once it runs.
    std::unique_ptr<BlockClock> substitute_;  // keeps time while there is no device
    std::vector<float> unheard_;
    Clock::time_point nextAttempt_;

    mutable std::mutex mutex_;
    std::string name_;  // behind the mutex: another device may be opened
    std::condition_variable wake_;
    bool stopping_ = false;
    std::thread watcher_;
};

DeviceOutput::~DeviceOutput() {
    Stop();
    if (context_) ma_context_uninit(&*context_);
}

void DeviceOutput::Stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    if (watcher_.joinable()) watcher_.join();
    substitute_.reset();
    CloseDevice();
}

bool DeviceOutput::Open() {
    ma_context_config config = ma_context_config_init();
    config.pulse.pApplicationName = "Hullrider Radio";
    if (ma_context_init(nullptr, 0, &config, &context_.emplace()) != MA_SUCCESS) {
        context_.reset();
        return false;
    }
    QuietBackend(*context_);
    if (!OpenDevice(0)) return false;
    uint32_t rate = device_.sampleRate;
    while (rate > kMaxRate) rate /= 2;
    if (rate != device_.sampleRate) {
        CloseDevice();
        if (!OpenDevice(rate)) return false;
    }
    rate_ = rate;
    return true;
}

// `rate` 0 is the device's own, so that nothing is resampled twice.
bool DeviceOutput::OpenDevice(uint32_t rate) {
    ma_device_config config = ma_device_config_init(ma_device_type_playback);
    config.playback.format = ma_format_f32;
    config.playback.channels = kStereo;
    config.sampleRate = rate;
    config.periodSizeInMilliseconds = kPeriodMs;
    config.periods = kPeriods;
    config.noPreSilencedOutputBuffer = MA_TRUE;
    config.dataCallback = OnData;
    config.pUserData = this;
    if (ma_device_init(&*context_, &config, &device_) != MA_SUCCESS) return false;
    open_ = true;
    char name[MA_MAX_DEVICE_NAME_LENGTH + 1] = "";
    ma_device_get_name(&device_, ma_device_type_playback, name, sizeof name, nullptr);
    const std::lock_guard lock(mutex_);
    name_ = std::string(name) + " (" + ma_get_backend_name(context_->backend) + ")";
    const uint64_t bufferFrames =
        uint64_t{device_.playback.internalPeriodSizeInFrames} * device_.playback.internalPeriods;
    const uint32_t internalRate = device_.playback.internalSampleRate;
    latencyFrames_ = internalRate == 0 ? 0 : static_cast<uint32_t>(bufferFrames * device_.sampleRate / internalRate);
    return true;
}

std::string DeviceOutput::Description() const {
    const std::lock_guard lock(mutex_);
    return name_ + ", " + std::to_string(rate_) + " Hz";
}

void DeviceOutput::CloseDevice() {
    if (open_) ma_device_uninit(&device_);
    open_ = false;
}

bool DeviceOutput::StartDevice() {
    lastAsked_ = Clock::now().time_since_epoch().count();
    return ma_device_start(&device_) == MA_SUCCESS;
}

bool DeviceOutput::Start(Mixer& mixer) {
    mixer_ = &mixer;
    unheard_.resize(BlockClock::BlockFrames(rate_) * kStereo);
    if (!StartDevice()) return false;
    watcher_ = std::thread([this] { Watch(); });
    return true;
}

void DeviceOutput::OnData(ma_device* device, void* out, const void*, ma_uint32 frames) {
    auto* self = static_cast<DeviceOutput*>(device->pUserData);
    self->lastAsked_ = Clock::now().time_since_epoch().count();
    self->mixer_.load()->Render(static_cast<float*>(out), frames);
}

void DeviceOutput::Watch() {
    std::unique_lock lock(mutex_);
    while (!wake_.wait_for(lock, kWatch, [&] { return stopping_; })) {
        lock.unlock();
        LookAtDevice();
        lock.lock();
    }
}

bool DeviceOutput::IsLost() const {
    const Clock::time_point asked{Clock::duration(lastAsked_.load())};
    return !open_ || Clock::now() - asked > kLost;
}

void DeviceOutput::LookAtDevice() {
    if (substitute_ == nullptr) {
        if (!IsLost()) return;
        // The mixer sees to it that a last call of the device and the substitute do not come at once.
        substitute_ = std::make_unique<BlockClock>(
            rate_, [this](size_t frames) { mixer_.load()->Render(unheard_.data(), frames); });
        CloseDevice();
        nextAttempt_ = Clock::now();
    }
    if (Clock::now() < nextAttempt_) return;
    nextAttempt_ = Clock::now() + kRetry;
    if (!OpenDevice(rate_)) return;
    substitute_.reset();
    if (!StartDevice()) CloseDevice();
}

}  // namespace

std::unique_ptr<Output> OpenDeviceOutput(int& error) {
    auto output = std::make_unique<DeviceOutput>();
    error = output->Open() ? BASS_OK : BASS_ERROR_DRIVER;
    if (error != BASS_OK) return nullptr;
    return output;
}

}  // namespace hullrider
