#include "audio/stereo_converter.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "audio/ring.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/frame.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

namespace hullrider {

namespace {

constexpr int kPaceSec = 10;

// Input without samples; a null pointer would mean the end of the input.
const uint8_t* const kNoSamples[AV_NUM_DATA_POINTERS] = {};

// The frames written, or a negative error.
int TryRunSwr(SwrContext* swr, float* out, size_t maxFrames, const uint8_t* const* in, int count) {
    if (swr == nullptr) return 0;
    auto* bytes = reinterpret_cast<uint8_t*>(out);
    return swr_convert(swr, &bytes, static_cast<int>(maxFrames), in, count);
}

size_t RunSwr(SwrContext* swr, float* out, size_t maxFrames, const uint8_t* const* in, int count) {
    return static_cast<size_t>(std::max(TryRunSwr(swr, out, maxFrames, in, count), 0));
}

uint64_t LayoutMask(const AVChannelLayout& layout) {
    return layout.order == AV_CHANNEL_ORDER_NATIVE ? layout.u.mask : 0;
}

}  // namespace

void StereoConverter::SwrDeleter::operator()(SwrContext* context) const {
    swr_free(&context);
}

bool StereoConverter::Fits(const AVFrame& frame) const {
    return swr_ != nullptr && frame.format == format_ && frame.sample_rate == rate_ &&
           frame.ch_layout.nb_channels == channels_ && LayoutMask(frame.ch_layout) == layout_;
}

bool StereoConverter::Accept(const AVFrame& frame) {
    if (Fits(frame)) return true;
    ending_ = std::move(swr_);
    // One channel plays at its own level on both sides. So do channels of unknown positions, or without a downmix rule.
    return (frame.ch_layout.nb_channels > 1 && Prepare(frame, false)) || Prepare(frame, true);
}

// `evenly`: every channel goes to both sides equally. Otherwise each goes to its position.
bool StereoConverter::Prepare(const AVFrame& frame, bool evenly) {
    const int channels = frame.ch_layout.nb_channels;
    AVChannelLayout in = {};
    // Without a known channel order, assumes the usual one for their number, if there is one.
    if (evenly) {
        in.order = AV_CHANNEL_ORDER_UNSPEC;
        in.nb_channels = channels;
    } else if (LayoutMask(frame.ch_layout) != 0) {
        av_channel_layout_copy(&in, &frame.ch_layout);
    } else {
        av_channel_layout_default(&in, channels);
    }
    AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
    SwrContext* swr = nullptr;
    const int made = swr_alloc_set_opts2(&swr, &stereo, AV_SAMPLE_FMT_FLT, static_cast<int>(mixRate_), &in,
                                         static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
    av_channel_layout_uninit(&in);
    std::unique_ptr<SwrContext, SwrDeleter> prepared(swr);
    if (made < 0) return false;
    // A downmix of many channels must not exceed full scale.
    av_opt_set_double(swr, "rematrix_maxval", 1.0, 0);
    const std::vector<double> shares(static_cast<size_t>(channels) * kStereo, 1.0 / channels);
    if (evenly && swr_set_matrix(swr, shares.data(), channels) < 0) return false;
    if (swr_init(swr) < 0) return false;
    swr_ = std::move(prepared);
    format_ = frame.format;
    rate_ = frame.sample_rate;
    channels_ = channels;
    layout_ = LayoutMask(frame.ch_layout);
    return true;
}

size_t StereoConverter::TakeEnding(float* out, size_t maxFrames) {
    if (ending_ == nullptr) return 0;
    const size_t frames = RunSwr(ending_.get(), out, maxFrames, nullptr, 0);
    if (frames < maxFrames) ending_.reset();
    return frames;
}

std::optional<size_t> StereoConverter::Convert(const AVFrame& frame, float* out, size_t maxFrames) {
    if (!Accept(frame)) return std::nullopt;
    const size_t before = TakeEnding(out, maxFrames);
    const int converted =
        TryRunSwr(swr_.get(), out + before * kStereo, maxFrames - before, frame.extended_data, frame.nb_samples);
    if (converted < 0 && before == 0) return std::nullopt;
    return before + static_cast<size_t>(std::max(converted, 0));
}

size_t StereoConverter::Take(float* out, size_t maxFrames) {
    const size_t before = TakeEnding(out, maxFrames);
    return before + RunSwr(swr_.get(), out + before * kStereo, maxFrames - before, kNoSamples, 0);
}

size_t StereoConverter::Drain(float* out, size_t maxFrames) {
    const size_t before = TakeEnding(out, maxFrames);
    return before + RunSwr(swr_.get(), out + before * kStereo, maxFrames - before, nullptr, 0);
}

// libswresample applies a compensation for a number of frames; it is renewed long before these have passed.
void StereoConverter::SetPace(double pace) {
    const bool isUnchanged = pace == 1.0 && pace_ == 1.0;
    pace_ = pace;
    if (swr_ == nullptr || isUnchanged) return;
    const int frames = static_cast<int>(mixRate_) * kPaceSec;
    const int added = static_cast<int>(std::lround((1.0 / pace - 1.0) * frames));
    swr_set_compensation(swr_.get(), added, added == 0 ? 0 : frames);
}

void StereoConverter::Reset() {
    swr_.reset();
    ending_.reset();
}

}  // namespace hullrider
