#include <memory>
#include <vector>

#include "audio/bass.h"
#include "audio/block_clock.h"
#include "audio/mixer.h"
#include "audio/output.h"
#include "audio/wav_writer.h"
#include "platform/console.h"

namespace hullrider {

namespace {

class WavOutput : public Output {
public:
    WavOutput(const std::string& path, uint32_t rate)
        : path_(path), rate_(rate), block_(BlockClock::BlockFrames(rate) * kStereo) {}
    ~WavOutput() override { Stop(); }

    bool Open() { return writer_.Open(path_, rate_); }

    uint32_t Rate() const override { return rate_; }
    uint32_t LatencyFrames() const override { return 0; }
    std::string Description() const override { return "WAV file " + path_ + ", " + std::to_string(rate_) + " Hz"; }

    bool Start(Mixer& mixer) override {
        mixer_ = &mixer;
        clock_ = std::make_unique<BlockClock>(rate_, [&] { return PlayBlock(mixer); });
        return true;
    }

    void Stop() override {
        clock_.reset();
        if (!writer_.IsOpen()) return;
        if (mixer_ != nullptr) {
            mixer_->FallSilent();
            PlayBlock(*mixer_);
        }
        if (!writer_.UpdateHeader()) TellFailure();
        writer_.Close();
    }

private:
    // Without the file, sound goes on unrecorded.
    BlockClock::Block PlayBlock(Mixer& mixer) {
        const size_t frames = BlockClock::BlockFrames(rate_);
        mixer.Render(block_.data(), frames);
        if (writer_.IsOpen()) Record(frames);
        return {frames, false};
    }

    void Record(size_t frames) {
        bool good = writer_.Write(block_.data(), frames);
        framesSinceHeader_ += frames;
        if (good && framesSinceHeader_ >= rate_ / 2) {
            framesSinceHeader_ = 0;
            good = writer_.UpdateHeader();
        }
        if (!good) TellFailure();
    }

    void TellFailure() { PrintErrorLine("Could not write to the WAV file, the recording ends here: " + path_); }

    std::string path_;
    uint32_t rate_;
    std::vector<float> block_;
    WavWriter writer_;
    size_t framesSinceHeader_ = 0;
    Mixer* mixer_ = nullptr;
    std::unique_ptr<BlockClock> clock_;
};

}  // namespace

std::unique_ptr<Output> OpenWavOutput(const std::string& path, uint32_t rate, int& error) {
    auto output = std::make_unique<WavOutput>(path, rate);
    error = output->Open() ? BASS_OK : BASS_ERROR_FILEOPEN;
    if (error != BASS_OK) return nullptr;
    return output;
}

}  // namespace hullrider
