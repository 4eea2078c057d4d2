#include "audio/tempo_source.h"

#include <soundtouch/SoundTouch.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>

#include "audio/bass.h"
#include "audio/channel.h"
#include "audio/ring.h"

namespace hullrider {

namespace {

constexpr uint32_t kAheadMs = 200;  // the delay of a tempo change
constexpr size_t kFeedFrames = 1024;
constexpr double kSearchSeconds = 0.009;  // half of SoundTouch's search window for a joint

class TempoSource : public Source {
public:
    TempoSource(std::shared_ptr<Channel> channel, uint32_t mixRate)
        : channel_(std::move(channel)), inner_(channel_->DecodedSource()), mixRate_(mixRate) {
        stretch_.setSampleRate(mixRate);
        stretch_.setChannels(kStereo);
    }
    ~TempoSource() override { channel_->ReturnSource(); }

    SourceFormat Format() const override {
        SourceFormat format = inner_.Format();
        format.type = BASS_CTYPE_STREAM_TEMPO;
        return format;
    }
    int64_t Length() const override { return inner_.Length(); }
    int64_t LoopLength() const override { return inner_.LoopLength(); }
    int64_t LoopStart() const override { return inner_.LoopStart(); }
    TagBlocks Tags() const override { return inner_.Tags(); }
    SourceRead Read(float* out, size_t frames) override;
    bool Seek(int64_t frame) override;
    // The channel that lent it may lend it again.
    void Cancel() override {
        if (channel_->IsFreed()) inner_.Cancel();
    }
    uint32_t AheadMs() const override { return kAheadMs; }
    std::optional<SourcePlace> Place() override;
    bool SetTempo(float percent) override {
        wanted_ = percent;
        return true;
    }
    std::optional<float> Tempo() const override { return wanted_.load(); }

private:
    double OwnFrames(double mixFrames) const { return mixFrames * inner_.Format().rate / mixRate_; }
    void TakeTempo();
    bool Feed();

    std::shared_ptr<Channel> channel_;
    Source& inner_;
    uint32_t mixRate_;
    std::atomic<float> wanted_{0.0f};

    soundtouch::SoundTouch stretch_;
    std::array<float, kFeedFrames * kStereo> feed_;
    bool placed_ = false;
    bool straight_ = true;  // unchanged tempo since the last seek: passed through
    bool innerEnded_ = false;
    float tempo_ = 0.0f;  // percent
    double from_ = 0.0;   // where `fed_` is counted from, in own frames
    double fed_ = 0.0;    // mixed frames passed through or fed to the stretcher
};

bool TempoSource::Seek(int64_t frame) {
    placed_ = true;
    stretch_.clear();
    tempo_ = wanted_;
    stretch_.setTempoChange(static_cast<double>(tempo_));
    straight_ = tempo_ == 0.0f;
    from_ = static_cast<double>(frame);
    fed_ = 0.0;
    innerEnded_ = !inner_.Seek(frame);
    return !innerEnded_;
}

void TempoSource::TakeTempo() {
    const float wanted = wanted_;
    if (wanted == tempo_) return;
    tempo_ = wanted;
    stretch_.setTempoChange(static_cast<double>(wanted));
    if (!straight_) return;
    // The output starts with the first input, so it joins without a seam.
    straight_ = false;
    from_ += OwnFrames(fed_);
    fed_ = 0.0;
}

std::optional<SourcePlace> TempoSource::Place() {
    if (!placed_) Seek(0);
    TakeTempo();
    const double tempo = straight_ ? 1.0 : 1.0 + static_cast<double>(tempo_) / 100.0;
    double gone = fed_;
    if (!straight_) {
        // The input used lags the output by half the search window; at first, nothing has been used.
        const double used = fed_ - stretch_.numUnprocessedSamples() + kSearchSeconds * mixRate_;
        gone = std::clamp(used - stretch_.numSamples() * tempo, 0.0, fed_);
    }
    return SourcePlace{from_ + OwnFrames(gone), OwnFrames(tempo)};
}

SourceRead TempoSource::Read(float* out, size_t frames) {
    if (!placed_) Seek(0);
    TakeTempo();
    if (straight_) {
        const SourceRead read = inner_.Read(out, frames);
        fed_ += static_cast<double>(read.frames);
        innerEnded_ = read.atEnd;
        return read;
    }
    size_t done = 0;
    for (;;) {
        done += stretch_.receiveSamples(out + done * kStereo, static_cast<unsigned>(frames - done));
        if (done == frames) return {done, false};
        if (innerEnded_) return {done, true};
        if (!Feed()) return {done, false};
    }
}

// False when nothing is available now.
bool TempoSource::Feed() {
    const SourceRead read = inner_.Read(feed_.data(), kFeedFrames);
    stretch_.putSamples(feed_.data(), static_cast<unsigned>(read.frames));
    fed_ += static_cast<double>(read.frames);
    innerEnded_ = read.atEnd;
    if (innerEnded_) stretch_.flush();
    return read.frames > 0 || innerEnded_;
}

}  // namespace

std::unique_ptr<Source> OpenTempoSource(std::shared_ptr<Channel> channel, uint32_t mixRate) {
    if (!channel->BorrowSource()) return nullptr;
    return std::make_unique<TempoSource>(std::move(channel), mixRate);
}

}  // namespace hullrider
