#include "audio/ffmpeg_setup.h"

#include <cstddef>
#include <mutex>

#include "audio/bass.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/mem.h>
}

namespace hullrider {

namespace {

constexpr const char* kFormats = "mp3,aac,mov,flac,ogg,wav";
constexpr int kMaxChannels = 64;
constexpr int kMinRate = 1000;
constexpr int kMaxRate = 768000;
constexpr size_t kMaxAllocation = size_t{96} << 20;  // the table of a 24-hour M4A file needs this

}  // namespace

void FfmpegDeleter::operator()(AVCodecContext* context) const {
    avcodec_free_context(&context);
}
void FfmpegDeleter::operator()(AVFormatContext* context) const {
    avformat_close_input(&context);
}
void FfmpegDeleter::operator()(AVFrame* frame) const {
    av_frame_free(&frame);
}
void FfmpegDeleter::operator()(AVIOContext* context) const {
    av_freep(&context->buffer);
    avio_context_free(&context);
}
void FfmpegDeleter::operator()(AVPacket* packet) const {
    av_packet_free(&packet);
}

void SetUpFfmpeg() {
    static std::once_flag once;
    std::call_once(once, [] {
        av_log_set_level(AV_LOG_QUIET);
        av_max_alloc(kMaxAllocation);
    });
}

AVDictionary* FormatOptions() {
    AVDictionary* options = nullptr;
    av_dict_set(&options, "format_whitelist", kFormats, 0);
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    av_dict_set(&options, "max_probe_packets", "1", 0);  // do not probe PCM for other codecs
    return options;
}

bool IsPlayable(const AVFrame& frame) {
    const int channels = frame.ch_layout.nb_channels;
    return frame.sample_rate >= kMinRate && frame.sample_rate <= kMaxRate && channels >= 1 && channels <= kMaxChannels;
}

int OpenDecoder(const AVStream& stream, FfmpegPtr<AVCodecContext>& decoder) {
    const AVCodec* codec = avcodec_find_decoder(stream.codecpar->codec_id);
    if (codec == nullptr) return BASS_ERROR_CODEC;
    decoder.reset(avcodec_alloc_context3(codec));
    if (!decoder) return BASS_ERROR_MEM;
    if (avcodec_parameters_to_context(decoder.get(), stream.codecpar) < 0) return BASS_ERROR_FORMAT;
    decoder->pkt_timebase = stream.time_base;
    decoder->thread_count = 1;
    return avcodec_open2(decoder.get(), codec, nullptr) < 0 ? BASS_ERROR_FILEFORM : BASS_OK;
}

}  // namespace hullrider
