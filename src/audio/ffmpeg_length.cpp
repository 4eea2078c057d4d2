// The length of a file's sound: the header's value, corrected where it is known to be wrong.
#include <algorithm>
#include <string_view>

#include "audio/bass.h"
#include "audio/ffmpeg_reader.h"
#include "audio/mp4_duration.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace hullrider {

namespace {

constexpr int64_t kMaxWalkAtOpening = int64_t{64} << 20;  // bytes; takes 20 ms, or a second from a slow disk
constexpr int64_t kFarAway = int64_t{1} << 48;            // a timestamp beyond any end
constexpr int64_t kMostFrames = int64_t{1} << 48;         // larger values are nonsense

}  // namespace

int FfmpegReader::FindLength() {
    int64_t duration = stream_->duration;
    if (duration == AV_NOPTS_VALUE) {
        duration =
            av_rescale_q(std::max<int64_t>(0, format_->duration), AVRational{1, AV_TIME_BASE}, stream_->time_base);
    }
    bool junkFollows = false;
    if (IsMp3File()) duration = Mp3End(duration, junkFollows) - origin_;  // counts what is skipped at the beginning
    if (IsMp4File()) duration = Mp4Duration(*format_, *stream_, duration, origin_);
    const int64_t frames = av_rescale_q(duration, stream_->time_base, {1, static_cast<int>(rate_)});
    length_ = frames < 0 || frames > kMostFrames ? 0 : frames;
    // Only MP4 gives the padding of its last packet without trimming it. Junk would be read in whole in search of
    // another frame.
    if ((IsMp4File() || junkFollows) && length_ > 0) endFrame_ = length_;
    return length_ == 0 || IsFlacFile() ? MeasureLength() : BASS_OK;
}

// A FLAC file may have been written without a known length, or truncated since. Leaves the reader at its start; returns
// the error when it cannot get back there.
int FfmpegReader::MeasureLength() {
    const std::optional<int64_t> end = DecodedEnd();
    if (end && (length_ == 0 || *end < length_)) length_ = *end;
    return Seek(0) ? BASS_OK : BASS_ERROR_FILEFORM;
}

// The position after the last packets; nothing when they are not found or do not decode.
std::optional<int64_t> FfmpegReader::DecodedEnd() {
    constexpr int kMostPackets = 500;  // more: these were not the last packets
    held_ = placed_ = drained_ = false;
    if (!Jump(kFarAway)) return {};
    avcodec_flush_buffers(decoder_.get());
    std::optional<int64_t> end;
    for (int i = 0; i < kMostPackets && Decode(); i++) end = std::max<int64_t>(0, position_);
    return end;
}

bool FfmpegReader::IsMp3File() const {
    return std::string_view(format_->iformat->name) == "mp3";
}

bool FfmpegReader::IsMp4File() const {
    return std::string_view(format_->iformat->name).starts_with("mov");
}

bool FfmpegReader::IsFlacFile() const {
    return std::string_view(format_->iformat->name) == "flac";
}

// The timestamp at which an MP3 ends. Without a table, FFmpeg's value is a guess from the first frame's bit rate.
int64_t FfmpegReader::Mp3End(int64_t told, bool& junkFollows) {
    if (!walk_) return told;
    if (const std::optional<int64_t> end = walk_->TableEnd()) return *end;
    if (avio_size(format_->pb) > kMaxWalkAtOpening) return told;
    mostBytesRead_ = INT64_MAX;
    const std::optional<Mp3Walk::End> end = walk_->FindEnd();
    if (!end) return told;
    junkFollows = end->junkFollows;
    return end->timestamp;
}

}  // namespace hullrider
