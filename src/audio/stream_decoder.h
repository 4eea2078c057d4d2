// Decodes one part of a network stream: what lies in its buffer up to a joint or the end. One thread.
#pragma once

#include <cstdint>

#include "audio/ffmpeg_setup.h"
#include "audio/stream_buffer.h"
#include "audio/tags.h"

namespace hullrider {

class StreamDecoder {
public:
    explicit StreamDecoder(StreamBuffer& buffer);

    // Waits for the first sound. Returns BASS_OK, or the error code for the stream.
    int Open();

    // Right after Open: the first decoded samples, which Next will return.
    const AVFrame& First() const { return *frame_; }
    // The next decoded samples, valid until the next call; waits for their bytes. Null at the end of the part, or when
    // the rest cannot be decoded.
    const AVFrame* Next();

    // Bytes that have arrived and were not decoded yet.
    uint64_t BytesAhead() const;
    // That many of them let Next return without waiting, as far as can be told.
    uint64_t BytesForNext() const { return longestStep_; }
    // The place in the buffer behind the last packet.
    uint64_t Place() const;
    // The average of what was decoded so far, without titles.
    double BytesPerSecond() const { return seconds_ > 0.0 ? static_cast<double>(bytes_) / seconds_ : 0.0; }

    uint32_t Type() const;  // a BASS_CTYPE value
    TagBlocks Tags() const { return TagsOf(*format_); }

private:
    bool Decode();
    bool SendPacket();

    StreamBuffer& buffer_;
    FfmpegPtr<AVIOContext> io_;  // outlives format_
    FfmpegPtr<AVFormatContext> format_;
    FfmpegPtr<AVCodecContext> decoder_;
    FfmpegPtr<AVPacket> packet_;
    FfmpegPtr<AVFrame> frame_;
    const AVStream* stream_ = nullptr;
    uint64_t begin_ = 0;          // the buffer's place at Open
    uint64_t longestStep_ = 512;  // bytes read for one packet
    uint64_t bytes_ = 0;          // of packets
    double seconds_ = 0.0;        // of their sound
    bool held_ = false;           // frame_ is decoded but not returned yet
    bool drained_ = false;
};

}  // namespace hullrider
