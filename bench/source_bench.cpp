// source_bench FILE...: what the way from a file to stereo float costs, beside FFmpeg's bare decoding of it.
//   open    ms until the first 80 ms of sound are there
//   decode  ms of processor time for a second of sound, at a mixing rate of 44100 Hz, and with FFmpeg alone
//   seek    ms until 80 ms of sound from 9/10 of the file are there, the first time and once more
//   memory  KB that the opened source holds after half a second
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <vector>

#include "audio/ring.h"
#include "audio/source.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace {

using namespace hullrider;

constexpr uint32_t kMixRate = 44100;
constexpr size_t kPiece = kMixRate / 2, kFirstPiece = kMixRate * 8 / 100;
constexpr int kRounds = 5;

double CpuMs() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

double WallMs() {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double HeapKb() {
    return static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd) / 1024.0;
}

std::unique_ptr<Source> Open(const char* path) {
    int error = 0;
    return OpenFfmpegSource({.path = path, .mixRate = kMixRate, .loop = false}, error);
}

// Milliseconds of processor time for decoding everything, and the seconds of sound that came out.
double DecodeAll(const char* path, double& seconds) {
    const auto source = Open(path);
    std::vector<float> out(kPiece * kStereo);
    const double begin = CpuMs();
    for (;;) {
        const SourceRead read = source->Read(out.data(), kPiece);
        seconds += static_cast<double>(read.frames) / kMixRate;
        if (read.atEnd) return CpuMs() - begin;
    }
}

double DecodeBare(const char* path) {
    AVFormatContext* format = nullptr;
    if (avformat_open_input(&format, path, nullptr, nullptr) < 0) return 0.0;
    avformat_find_stream_info(format, nullptr);
    const int index = av_find_best_stream(format, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    const AVCodec* codec = avcodec_find_decoder(format->streams[index]->codecpar->codec_id);
    AVCodecContext* decoder = avcodec_alloc_context3(codec);
    avcodec_parameters_to_context(decoder, format->streams[index]->codecpar);
    decoder->thread_count = 1;
    avcodec_open2(decoder, codec, nullptr);
    AVPacket* packet = av_packet_alloc();
    AVFrame* frame = av_frame_alloc();
    const double begin = CpuMs();
    while (av_read_frame(format, packet) >= 0) {
        if (packet->stream_index == index) avcodec_send_packet(decoder, packet);
        av_packet_unref(packet);
        while (avcodec_receive_frame(decoder, frame) >= 0) av_frame_unref(frame);
    }
    const double ms = CpuMs() - begin;
    av_frame_free(&frame);
    av_packet_free(&packet);
    avcodec_free_context(&decoder);
    avformat_close_input(&format);
    return ms;
}

void Measure(const char* path) {
    if (Open(path) == nullptr) {
        std::printf("%s does not open\n", path);
        return;
    }
    std::vector<float> out(kPiece * kStereo);
    double open = 1e9, own = 1e9, bare = 1e9, seek = 1e9, again = 1e9, seconds = 0.0, memory = 0.0;
    for (int i = 0; i < kRounds; i++) {
        const double heap = HeapKb(), begin = WallMs();
        const auto source = Open(path);
        source->Read(out.data(), kFirstPiece);
        open = std::min(open, WallMs() - begin);
        source->Read(out.data(), kPiece);
        memory = HeapKb() - heap;
        for (double* best : {&seek, &again}) {
            const double start = WallMs();
            source->Seek(source->Length() / 10 * 9);
            source->Read(out.data(), kFirstPiece);
            *best = std::min(*best, WallMs() - start);
        }
        seconds = 0.0;
        own = std::min(own, DecodeAll(path, seconds));
        bare = std::min(bare, DecodeBare(path));
    }
    std::printf("%-16s %7.1f s  open %5.2f  decode %.3f (bare %.3f, %+.0f %%)  seek %6.2f, %5.2f  memory %.0f\n",
                path + std::max<size_t>(std::string(path).rfind('/') + 1, 0), seconds, open, own / seconds,
                bare / seconds, (own / bare - 1.0) * 100.0, seek, again, memory);
}

}  // namespace

int main(int count, char** files) {
    for (int i = 1; i < count; i++) Measure(files[i]);
    return 0;
}
