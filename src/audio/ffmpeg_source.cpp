#include <algorithm>
#include <atomic>
#include <optional>

#include "audio/bass.h"
#include "audio/ffmpeg_reader.h"
#include "audio/ring.h"
#include "audio/source.h"
#include "audio/stereo_converter.h"

namespace hullrider {

namespace {

class FfmpegSource : public Source {
public:
    explicit FfmpegSource(const SourceRequest& request) : loop_(request.loop), converter_(request.mixRate) {}

    int Open(const std::string& path) {
        const int error = reader_.Open(path);
        if (error != BASS_OK) return error;
        length_ = reader_.Length();
        return converter_.Accept(reader_.First()) ? BASS_OK : BASS_ERROR_FORMAT;
    }

    SourceFormat Format() const override { return {reader_.Rate(), reader_.Channels(), BASS_CTYPE_STREAM}; }
    int64_t Length() const override { return length_; }
    int64_t LoopLength() const override { return loopLength_; }
    void SetLoop(bool loop) override { loop_ = loop; }
    TagBlocks Tags() const override { return reader_.Tags(); }
    void Cancel() override { reader_.Cancel(); }
    SourceRead Read(float* out, size_t frames) override;
    bool Seek(int64_t frame) override;

private:
    bool ComeRound();

    std::atomic<bool> loop_;
    FfmpegReader reader_;
    StereoConverter converter_;
    bool ended_ = false;
    bool yielded_ = false;  // since the start of the file; also true after a seek into it
    std::atomic<int64_t> length_{0}, loopLength_{0};
};

SourceRead FfmpegSource::Read(float* out, size_t frames) {
    size_t done = ended_ ? 0 : converter_.Take(out, frames);
    while (done < frames && !ended_) {
        if (const AVFrame* samples = reader_.Next()) {
            const std::optional<size_t> converted = converter_.Convert(*samples, out + done * kStereo, frames - done);
            if (converted) yielded_ = true;
            done += converted.value_or(0);
        } else {
            ended_ = !ComeRound();
        }
    }
    if (ended_ && done < frames) {
        const size_t rest = converter_.Drain(out + done * kStereo, frames - done);
        return {done + rest, done + rest < frames};
    }
    return {done, false};
}

// At the end: back to the start if the source loops, without a gap because the converter goes on. Not after a whole
// round without sound, which would repeat forever.
bool FfmpegSource::ComeRound() {
    const int64_t end = reader_.Position();
    length_ = end;
    if (!loop_ || end <= 0 || !yielded_) return false;
    yielded_ = false;
    loopLength_ = end;
    return reader_.Seek(0);
}

bool FfmpegSource::Seek(int64_t frame) {
    converter_.Reset();
    yielded_ = frame > 0;
    ended_ = !reader_.Seek(frame);
    return !ended_;
}

}  // namespace

std::unique_ptr<Source> OpenFfmpegSource(const SourceRequest& request, int& error) {
    auto source = std::make_unique<FfmpegSource>(request);
    error = source->Open(request.path);
    if (error != BASS_OK) return nullptr;
    return source;
}

}  // namespace hullrider
