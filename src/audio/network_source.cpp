#include "audio/network_source.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <mutex>
#include <utility>

#include "audio/bass.h"
#include "audio/ring.h"
#include "audio/stereo_converter.h"
#include "audio/stream_decoder.h"
#include "audio/stream_pace.h"
#include "audio/stream_receiver.h"

extern "C" {
#include <libavutil/frame.h>
}

namespace hullrider {

namespace {

using std::chrono::milliseconds;

constexpr uint32_t kRefillMs = 1000;         // ahead, before it sounds and after it has run dry
constexpr uint64_t kBytesToOpenPart = 8192;  // of a later part, for its first sound
constexpr milliseconds kPartTimeout{5'000};  // for the first sound of a later part
constexpr int kMostBadParts = 5;             // in a row, before the stream is given up
constexpr double kPaceStepSec = 1.0;
constexpr double kHistorySec = 5.0;  // how long it may take until decoded sound is heard

class NetworkSource : public Source {
public:
    explicit NetworkSource(const SourceRequest& request, milliseconds timeout)
        : mixRate_(request.mixRate),
          receiver_(std::make_shared<StreamReceiver>(request.path, timeout)),
          buffer_(receiver_->Buffer()),
          converter_(request.mixRate) {}
    ~NetworkSource() override { receiver_->Cancel(); }

    int Open(milliseconds timeout, const std::stop_token& stop);

    SourceFormat Format() const override { return format_; }
    int64_t Length() const override { return 0; }
    int64_t LoopLength() const override { return 0; }
    SourceRead Read(float* out, size_t frames) override;
    bool Seek(int64_t) override { return !isEnded_; }  // a live stream has one place only: it goes on from there
    TagBlocks Tags() const override;
    TagBlocks TagsAt(int64_t frame) const override;
    void Cancel() override { receiver_->Cancel(); }
    std::optional<SourcePlace> Place() override { return SourcePlace{static_cast<double>(decoded_), OwnPace()}; }
    uint32_t RefillMs() const override { return kRefillMs; }
    void SetAhead(size_t frames) override { aheadSec_ = static_cast<double>(frames) / mixRate_; }
    size_t BytesAhead() const override { return buffer_.BytesAhead(); }
    bool IsConnected() const override { return receiver_->IsConnected(); }
    uint32_t BitRate() const override { return bitRate_; }

private:
    // Tags of the sound from a frame on.
    struct TimedTags {
        int64_t from;
        TagBlocks tags;
    };

    double OwnPace() const { return pace_ * format_.rate / mixRate_; }
    bool MustWait() const;
    bool NextPart();
    void LeavePart();
    int OpenPart(milliseconds timeout);
    void AddSound(const AVFrame& samples);
    void AddTags(TagBlock block);
    void KeepPace();

    const uint32_t mixRate_;
    const std::shared_ptr<StreamReceiver> receiver_;
    StreamBuffer& buffer_;
    std::unique_ptr<StreamDecoder> decoder_;
    StereoConverter converter_;
    StreamPace paceKeeper_;
    SourceFormat format_;
    int64_t decoded_ = 0, pacedAt_ = 0;  // in own frames
    double aheadSec_ = 0.0, pace_ = 1.0;
    int badParts_ = 0, connections_ = 0;
    bool isBehindJoint_ = true, isEnded_ = false;
    std::atomic<uint32_t> bitRate_{0};

    mutable std::mutex tagsMutex_;
    std::deque<TimedTags> tags_;
};

int NetworkSource::Open(milliseconds timeout, const std::stop_token& stop) {
    const std::stop_callback cancel(stop, [this] { receiver_->Cancel(); });
    if (!receiver_->Start()) return BASS_ERROR_MEM;
    const int error = OpenPart(timeout);
    if (error != BASS_OK && buffer_.Error() != BASS_OK) return buffer_.Error();
    if (error != BASS_OK) return buffer_.IsPartComplete() || buffer_.BytesAhead() > 0 ? error : BASS_ERROR_TIMEOUT;
    receiver_->KeepConnected();
    const AVFrame& first = decoder_->First();
    format_ = {static_cast<uint32_t>(first.sample_rate), static_cast<uint32_t>(first.ch_layout.nb_channels),
               decoder_->Type()};
    return converter_.Accept(first) ? BASS_OK : BASS_ERROR_FORMAT;
}

TagBlocks NetworkSource::Tags() const {
    const StreamHeaders headers = receiver_->Headers();
    return {{headers.isIcy ? BASS_TAG_ICY : BASS_TAG_HTTP, headers.block}};
}

// The last of the given place or before it.
TagBlocks NetworkSource::TagsAt(int64_t frame) const {
    const std::lock_guard lock(tagsMutex_);
    const auto isLater = [](int64_t place, const TimedTags& tags) { return place < tags.from; };
    const auto next = std::upper_bound(tags_.begin(), tags_.end(), frame, isLater);
    return next == tags_.begin() ? TagBlocks() : std::prev(next)->tags;
}

// For the sound that is decoded from now on.
void NetworkSource::AddTags(TagBlock block) {
    const int64_t heard = decoded_ - static_cast<int64_t>(kHistorySec * format_.rate);
    const std::lock_guard lock(tagsMutex_);
    while (tags_.size() > 1 && tags_[1].from <= heard) tags_.pop_front();
    tags_.push_back({decoded_, {std::move(block)}});
}

// Whether decoding on would keep the decoder thread waiting for the network.
bool NetworkSource::MustWait() const {
    if (buffer_.IsPartComplete()) return false;
    return decoder_ ? decoder_->BytesAhead() < decoder_->BytesForNext() : buffer_.Available() < kBytesToOpenPart;
}

SourceRead NetworkSource::Read(float* out, size_t frames) {
    size_t done = converter_.Take(out, frames);
    if (done < frames) KeepPace();
    while (done < frames && !isEnded_ && !MustWait()) {
        if (const AVFrame* const samples = decoder_ ? decoder_->Next() : nullptr) {
            AddSound(*samples);
            done += converter_.Convert(*samples, out + done * kStereo, frames - done).value_or(0);
        } else if (!NextPart()) {
            break;
        }
    }
    return {done, isEnded_ && done < frames};
}

void NetworkSource::AddSound(const AVFrame& samples) {
    badParts_ = 0;
    if (std::optional<std::string> title = buffer_.TakeTitle(decoder_->Place())) {
        AddTags({BASS_TAG_META, std::move(*title)});
    }
    decoded_ += static_cast<int64_t>(samples.nb_samples) * format_.rate / samples.sample_rate;
    bitRate_ = static_cast<uint32_t>(decoder_->BytesPerSecond() * 8.0 / 1000.0 + 0.5);
}

// Begins the part behind the next joint. False when it cannot begin yet, or the stream is over.
bool NetworkSource::NextPart() {
    if (decoder_) LeavePart();
    if (!isBehindJoint_) isBehindJoint_ = buffer_.PassJoint();
    if (!isBehindJoint_) {
        isEnded_ = buffer_.IsOver();
        return false;
    }
    if (MustWait()) return false;
    if (OpenPart(kPartTimeout) == BASS_OK) return true;
    LeavePart();
    isEnded_ = ++badParts_ == kMostBadParts;
    return false;
}

// What cannot be decoded is received from a new connection.
void NetworkSource::LeavePart() {
    decoder_.reset();
    isBehindJoint_ = false;
    if (!buffer_.IsPartComplete()) receiver_->Reconnect();
}

int NetworkSource::OpenPart(milliseconds timeout) {
    buffer_.SetDeadline(std::chrono::steady_clock::now() + timeout);
    decoder_ = std::make_unique<StreamDecoder>(buffer_);
    const int error = decoder_->Open();
    buffer_.SetDeadline(std::nullopt);
    if (error != BASS_OK) return error;
    for (TagBlock& block : decoder_->Tags()) {
        if (block.kind == BASS_TAG_OGG) AddTags(std::move(block));
    }
    return BASS_OK;
}

// Called when the converter holds no samples back: changing its pace for the first time would drop them.
void NetworkSource::KeepPace() {
    const double playedSec = static_cast<double>(decoded_ - pacedAt_) / format_.rate;
    if (!decoder_ || playedSec < kPaceStepSec) return;
    pacedAt_ = decoded_;
    if (std::exchange(connections_, receiver_->Connections()) != receiver_->Connections()) paceKeeper_.Reset();
    const double bufferedSec = static_cast<double>(buffer_.BytesAhead()) / decoder_->BytesPerSecond();
    pace_ = paceKeeper_.Update(aheadSec_ + bufferedSec, playedSec);
    converter_.SetPace(pace_);
}

}  // namespace

std::unique_ptr<Source> OpenNetworkSource(const SourceRequest& request, milliseconds timeout,
                                          const std::stop_token& stop, int& error) {
    auto source = std::make_unique<NetworkSource>(request, timeout);
    error = source->Open(timeout, stop);
    if (error != BASS_OK) return nullptr;
    return source;
}

}  // namespace hullrider
