#include "audio/ffmpeg_reader.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "audio/bass.h"
#include "audio/mp4_tables.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/mem.h>
#include <libavutil/opt.h>
}

namespace hullrider {

namespace {

constexpr int kMaxBadPackets = 250;  // in a row, before the rest of the file is given up
constexpr int kManyBadPackets = 50;  // in a row, more than damage would cause
// The most that FFmpeg may read and keep in search of a frame: an unfinished download, or a file that is not a song,
// may have none.
constexpr int64_t kMaxSearch = int64_t{16} << 20;
constexpr int64_t kNoEnd = std::numeric_limits<int64_t>::max();

// How far ahead of a position decoding must begin for it to be right: lossy codecs depend on earlier frames, and an mp3
// frame uses up to 511 bytes of them.
int64_t PrerollFrames(const AVCodecContext& decoder, uint32_t rate) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get(decoder.codec_id);
    const bool lossless = descriptor != nullptr && (descriptor->props & AV_CODEC_PROP_LOSSY) == 0;
    return lossless ? 0 : rate * 3 / 10;
}

}  // namespace

FfmpegReader::FfmpegReader() : packet_(av_packet_alloc()), frame_(av_frame_alloc()) {}
FfmpegReader::~FfmpegReader() = default;

int FfmpegReader::Open(const std::string& path) {
    SetUpFfmpeg();
    if (!packet_ || !frame_) return BASS_ERROR_MEM;
    if (HasAbsurdMp4Tables(path)) return BASS_ERROR_FILEFORM;
    AVFormatContext* format = avformat_alloc_context();
    if (format == nullptr) return BASS_ERROR_MEM;
    format->interrupt_callback = {[](void* self) { return static_cast<FfmpegReader*>(self)->MustStop() ? 1 : 0; },
                                  this};
    AVDictionary* options = FormatOptions();
    const int opened = avformat_open_input(&format, ("file:" + path).c_str(), nullptr, &options);
    av_dict_free(&options);
    if (opened == AVERROR(ENOENT) || opened == AVERROR(EACCES)) return BASS_ERROR_FILEOPEN;
    if (opened < 0) return BASS_ERROR_FILEFORM;
    format_.reset(format);

    if (IsMp3File() && !ReadyMp3()) return BASS_ERROR_FILEFORM;
    if (const int error = FindAudio(); error != BASS_OK) return error;
    if (const int error = OpenDecoder(*stream_, decoder_); error != BASS_OK) return error;

    // Only a file that decodes is a song, whatever its name and first bytes.
    if (!DecodeFirst()) return BASS_ERROR_FILEFORM;
    return FindLength();
}

bool FfmpegReader::MustStop() const {
    return canceled_.load() || (format_ && BytesRead() > mostBytesRead_);
}

int64_t FfmpegReader::BytesRead() const {
    return format_->pb->bytes_read;
}

// FFmpeg would read junk before the first frame in whole, and find false frames in it.
bool FfmpegReader::ReadyMp3() {
    AVIOContext* file = format_->pb;
    file->update_checksum = nullptr;  // the demuxer leaves it on when it finds no table
    Mp3Walk walk(*format_, *format_->streams[0], avio_tell(file), 0);
    const std::optional<int64_t> frame = walk.FindFrame();
    return frame && avio_seek(file, *frame, SEEK_SET) >= 0;
}

// The decoder also knows the true rate, which a container may tell wrongly (HE-AAC). Frame 0 is the first that decodes:
// FFmpeg counts leading junk as time.
bool FfmpegReader::DecodeFirst() {
    rate_ = static_cast<uint32_t>(std::max(1, stream_->codecpar->sample_rate));
    endFrame_ = kNoEnd;
    if (!Decode()) return false;
    rate_ = static_cast<uint32_t>(frame_->sample_rate);
    channels_ = static_cast<uint32_t>(frame_->ch_layout.nb_channels);
    origin_ = stream_->start_time == AV_NOPTS_VALUE ? 0 : stream_->start_time;
    if (frame_->best_effort_timestamp != AV_NOPTS_VALUE) origin_ = std::max(origin_, frame_->best_effort_timestamp);
    placed_ = false;
    Place();
    held_ = true;
    return true;
}

int FfmpegReader::FindAudio() {
    // Otherwise fifty packets, nearly a megabyte of PCM, are buffered while waiting for a timestamp. Only raw AAC needs
    // that, to find its bit rate and so its length.
    if (std::string_view(format_->iformat->name) != "aac") format_->max_ts_probe = 1;
    mostBytesRead_ = BytesRead() + kMaxSearch;
    if (avformat_find_stream_info(format_.get(), nullptr) < 0) return BASS_ERROR_FILEFORM;
    const int index = av_find_best_stream(format_.get(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (index < 0) return BASS_ERROR_FILEFORM;
    for (unsigned i = 0; i < format_->nb_streams; i++) {
        if (static_cast<int>(i) == index) continue;
        format_->streams[i]->discard = AVDISCARD_ALL;
        av_packet_unref(&format_->streams[i]->attached_pic);  // a cover may take megabytes
    }
    stream_ = format_->streams[index];
    return BASS_OK;
}

// Leaves the next decoded frame in frame_ and its end in position_.
bool FfmpegReader::Decode() {
    for (int bad = 0; bad < kMaxBadPackets && !canceled_.load();) {
        const int received = avcodec_receive_frame(decoder_.get(), frame_.get());
        if (received == AVERROR_EOF) return false;
        if (received >= 0 && IsPlayable(*frame_)) {
            Place();
            return true;
        }
        const bool good = received == AVERROR(EAGAIN) && SendPacket();
        if (!good && ++bad % kManyBadPackets == 0) PassJunk();
    }
    return false;
}

// FFmpeg makes packets even of junk between two joined MP3s, such as a picture. Skips to the next true frame, the one
// after the last decoded frame.
void FfmpegReader::PassJunk() {
    if (!walk_ || !placed_ || drained_ || sentPos_ < 0) return;
    mostBytesRead_ = INT64_MAX;
    const int64_t place = avio_tell(format_->pb), timestamp = TimestampOfFrame(position_);
    Mp3Walk walk(*format_, *stream_, sentPos_ + 1, timestamp);
    if (!walk.FindFrame()) {
        avio_seek(format_->pb, place, SEEK_SET);
        return;
    }
    walk.GoBeyond(timestamp);
    if (Jump(timestamp)) avcodec_flush_buffers(decoder_.get());
}

// Moves position_ to the end of frame_: by its timestamp, or else by its length.
void FfmpegReader::Place() {
    if (!placed_) {
        const int64_t timestamp = frame_->best_effort_timestamp;
        position_ = timestamp == AV_NOPTS_VALUE ? wantedFrame_ : FrameOfTimestamp(timestamp);
        placed_ = true;
    }
    // If the rate changes midway, positions still count in the first one.
    position_ += av_rescale(frame_->nb_samples, rate_, frame_->sample_rate);
}

// False when the packet was bad and skipped.
bool FfmpegReader::SendPacket() {
    if (drained_) return false;
    int read = 0;
    do {
        av_packet_unref(packet_.get());
        mostBytesRead_ = BytesRead() + kMaxSearch;
        read = av_read_frame(format_.get(), packet_.get());
    } while (read >= 0 && packet_->stream_index != stream_->index);
    drained_ = read < 0;
    sentPos_ = packet_->pos;
    if (!drained_) BeginWalk();
    const int sent = avcodec_send_packet(decoder_.get(), drained_ ? nullptr : packet_.get());
    av_packet_unref(packet_.get());
    return sent >= 0;
}

// Starts at the first packet, heard or not, because a table may precede it.
void FfmpegReader::BeginWalk() {
    if (walk_ || !IsMp3File() || packet_->pos < 0) return;
    // After much junk FFmpeg does not know the time, which is 0.
    walk_.emplace(*format_, *stream_, packet_->pos, packet_->dts == AV_NOPTS_VALUE ? 0 : packet_->dts);
}

const AVFrame* FfmpegReader::Next() {
    while (held_ || (position_ < endFrame_ && Decode())) {
        held_ = false;
        if (TrimFrame()) return frame_.get();
    }
    return nullptr;
}

// Cuts off everything before the wanted frame and after the end; false when nothing is left.
bool FfmpegReader::TrimFrame() {
    const auto ownSamples = [&](int64_t frames) {
        return static_cast<int>(std::min<int64_t>(frame_->nb_samples, av_rescale(frames, frame_->sample_rate, rate_)));
    };
    const int64_t begin = FrameBegin();
    const int before = begin < wantedFrame_ ? ownSamples(wantedFrame_ - begin) : 0;
    const int after = position_ > endFrame_ ? ownSamples(position_ - endFrame_) : 0;
    if (before + after >= frame_->nb_samples) return false;
    if (before > 0) {
        const auto format = static_cast<AVSampleFormat>(frame_->format);
        const bool planar = av_sample_fmt_is_planar(format) != 0;
        const int channels = frame_->ch_layout.nb_channels;
        const ptrdiff_t bytes = ptrdiff_t{before} * av_get_bytes_per_sample(format) * (planar ? 1 : channels);
        for (int i = 0; i < (planar ? channels : 1); i++) frame_->extended_data[i] += bytes;
    }
    frame_->nb_samples -= before + after;
    return true;
}

bool FfmpegReader::Seek(int64_t frame) {
    // A seek may land late, by a guess from the bit rate or on a frame that depends on a lost one. Then it starts
    // earlier.
    const int64_t preroll = PrerollFrames(*decoder_, rate_);
    for (const int64_t before : {preroll, preroll + int64_t{rate_} * 5, frame}) {
        if (SeekBefore(frame, before) && FrameBegin() <= frame) return true;
    }
    return held_;
}

bool FfmpegReader::SeekBefore(int64_t frame, int64_t prerollFrames) {
    held_ = placed_ = drained_ = false;
    wantedFrame_ = frame;
    const int64_t target = frame - prerollFrames;
    if (target > 0 ? !Jump(TimestampOfFrame(target)) : !JumpToStart()) return false;
    avcodec_flush_buffers(decoder_.get());
    held_ = Decode();
    return held_;
}

bool FfmpegReader::Jump(int64_t timestamp) {
    mostBytesRead_ = INT64_MAX;
    if (walk_) walk_->GoBeyond(timestamp);
    return av_seek_frame(format_.get(), stream_->index, timestamp, AVSEEK_FLAG_BACKWARD) >= 0;
}

// Packets that prime the decoder may lie before time 0, where not every demuxer can seek.
bool FfmpegReader::JumpToStart() {
    const int64_t second = av_rescale_q(1, {1, 1}, stream_->time_base);
    return Jump(std::min<int64_t>(origin_, 0) - second) || Jump(std::min<int64_t>(origin_, 0)) || Jump(origin_);
}

int64_t FfmpegReader::FrameBegin() const {
    return position_ - av_rescale(frame_->nb_samples, rate_, frame_->sample_rate);
}

int64_t FfmpegReader::FrameOfTimestamp(int64_t timestamp) const {
    return av_rescale_q(timestamp - origin_, stream_->time_base, {1, static_cast<int>(rate_)});
}

int64_t FfmpegReader::TimestampOfFrame(int64_t frame) const {
    return origin_ + av_rescale_q(frame, {1, static_cast<int>(rate_)}, stream_->time_base);
}

}  // namespace hullrider
