// Decodes the first audio stream of a file, from any position. One thread at a time.
//
// Frames are counted at the sample rate of the file's first decoded packet, from the first frame that can be decoded
// and is meant to be heard: encoder delay and padding (gapless data) are left out, and so is junk.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <optional>
#include <string>

#include "audio/ffmpeg_setup.h"
#include "audio/mp3_walk.h"
#include "audio/tags.h"

namespace hullrider {

class FfmpegReader {
public:
    FfmpegReader();
    ~FfmpegReader();

    // Returns BASS_OK, or the error code for the file.
    int Open(const std::string& path);

    // Right after Open: the first decoded samples, which Next will return.
    const AVFrame& First() const { return *frame_; }

    uint32_t Rate() const { return rate_; }
    uint32_t Channels() const { return channels_; }
    int64_t Length() const { return length_; }  // in frames; an estimate where the file does not say
    int64_t Position() const { return std::min(position_, endFrame_); }  // of the frame after the last ones from Next

    TagBlocks Tags() const { return TagsOf(*format_); }

    // Any thread, even during a read: nothing more is read from the file.
    void Cancel() { canceled_.store(true); }

    // Next continues at `frame`. False when that is impossible; then the stream is at its end.
    bool Seek(int64_t frame);

    // The next decoded samples, without those before the position sought; null at the end or when the rest cannot be
    // decoded. Valid until the next call.
    const AVFrame* Next();

private:
    int FindAudio();
    bool IsMp3File() const;
    bool IsMp4File() const;
    bool IsFlacFile() const;
    bool MustStop() const;
    int64_t BytesRead() const;
    bool ReadyMp3();
    bool DecodeFirst();
    int FindLength();
    int64_t Mp3End(int64_t told, bool& junkFollows);
    int MeasureLength();
    std::optional<int64_t> DecodedEnd();
    bool Decode();
    void Place();
    void PassJunk();
    bool SendPacket();
    void BeginWalk();
    bool SeekBefore(int64_t frame, int64_t prerollFrames);
    bool Jump(int64_t timestamp);
    bool JumpToStart();
    bool TrimFrame();
    int64_t FrameBegin() const;
    int64_t FrameOfTimestamp(int64_t timestamp) const;
    int64_t TimestampOfFrame(int64_t frame) const;

    std::atomic<bool> canceled_{false};
    int64_t mostBytesRead_ = INT64_MAX;  // FFmpeg is interrupted beyond this
    FfmpegPtr<AVFormatContext> format_;
    FfmpegPtr<AVCodecContext> decoder_;
    FfmpegPtr<AVPacket> packet_;
    FfmpegPtr<AVFrame> frame_;
    AVStream* stream_ = nullptr;
    std::optional<Mp3Walk> walk_;  // for an MP3 file
    uint32_t rate_ = 0, channels_ = 0;
    int64_t length_ = 0;
    int64_t origin_ = 0;    // the timestamp of frame 0, in the stream's time base
    int64_t endFrame_ = 0;  // where the sound ends according to the file; the last packet's rest is padding
    int64_t sentPos_ = -1;  // file offset of the last packet sent to the decoder, or -1
    int64_t position_ = 0;
    int64_t wantedFrame_ = 0;  // samples before it are dropped
    bool placed_ = false;      // position_ is known: a packet was decoded since the start or the last seek
    bool held_ = false;        // frame_ is decoded but not returned yet
    bool drained_ = false;     // no packets are left
};

}  // namespace hullrider
