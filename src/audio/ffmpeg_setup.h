// What every reader of FFmpeg's needs.
#pragma once

#include <memory>

struct AVCodecContext;
struct AVDictionary;
struct AVFormatContext;
struct AVFrame;
struct AVIOContext;
struct AVPacket;
struct AVStream;

namespace hullrider {

// Frees FFmpeg's objects, each with its own function.
struct FfmpegDeleter {
    void operator()(AVCodecContext* context) const;
    void operator()(AVFormatContext* context) const;
    void operator()(AVFrame* frame) const;
    void operator()(AVIOContext* context) const;  // and its buffer
    void operator()(AVPacket* packet) const;
};
template <typename T>
using FfmpegPtr = std::unique_ptr<T, FfmpegDeleter>;

// Silent, and with a bound on each allocation. Before anything else; any thread, any number of times.
void SetUpFfmpeg();

// For avformat_open_input: the same few formats on every system, and no playlists or scripts, because a song must never
// open another file. The caller frees it.
AVDictionary* FormatOptions();

bool IsPlayable(const AVFrame& frame);

// Returns BASS_OK, or the error code.
int OpenDecoder(const AVStream& stream, FfmpegPtr<AVCodecContext>& decoder);

}  // namespace hullrider
