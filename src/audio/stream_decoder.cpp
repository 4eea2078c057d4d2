#include "audio/stream_decoder.h"

#include <algorithm>

#include "audio/bass.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/mem.h>
}

namespace hullrider {

namespace {

constexpr int kIoBytes = 4096;             // small, so that little is read before it is needed
constexpr int64_t kProbeBytes = 64 << 10;  // of a stream whose format is not recognized at once
constexpr int kMaxBadPackets = 100;        // in a row, before the rest of the part is given up

int ReadBuffer(void* buffer, uint8_t* out, int size) {
    const size_t count = static_cast<StreamBuffer*>(buffer)->Read(out, static_cast<size_t>(size));
    return count == 0 ? AVERROR_EOF : static_cast<int>(count);
}

AVIOContext* MakeIo(StreamBuffer& buffer) {
    auto* const memory = static_cast<unsigned char*>(av_malloc(kIoBytes));
    if (memory == nullptr) return nullptr;
    AVIOContext* const io = avio_alloc_context(memory, kIoBytes, 0, &buffer, ReadBuffer, nullptr, nullptr);
    if (io == nullptr) return av_free(memory), nullptr;
    io->seekable = 0;
    return io;
}

// Its format may be known only when it is decoded: analyzing it before would wait for more of it.
const AVStream* FirstAudio(const AVFormatContext& format) {
    for (unsigned i = 0; i < format.nb_streams; i++) {
        if (format.streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) return format.streams[i];
    }
    return nullptr;
}

}  // namespace

StreamDecoder::StreamDecoder(StreamBuffer& buffer)
    : buffer_(buffer), packet_(av_packet_alloc()), frame_(av_frame_alloc()) {}

int StreamDecoder::Open() {
    SetUpFfmpeg();
    begin_ = buffer_.BytesRead();
    io_.reset(MakeIo(buffer_));
    AVFormatContext* format = avformat_alloc_context();
    if (!packet_ || !frame_ || !io_ || format == nullptr) return avformat_free_context(format), BASS_ERROR_MEM;
    format->pb = io_.get();
    format->probesize = kProbeBytes;
    AVDictionary* options = FormatOptions();
    const int opened = avformat_open_input(&format, nullptr, nullptr, &options);
    av_dict_free(&options);
    if (opened < 0) return BASS_ERROR_FILEFORM;
    format_.reset(format);

    stream_ = FirstAudio(*format);
    if (stream_ == nullptr) return BASS_ERROR_FILEFORM;
    if (const int error = OpenDecoder(*stream_, decoder_); error != BASS_OK) return error;
    held_ = Decode();
    return held_ ? BASS_OK : BASS_ERROR_FILEFORM;
}

bool StreamDecoder::Decode() {
    for (int bad = 0; bad < kMaxBadPackets;) {
        const int received = avcodec_receive_frame(decoder_.get(), frame_.get());
        if (received == AVERROR_EOF) return false;
        if (received >= 0 && IsPlayable(*frame_)) {
            seconds_ += static_cast<double>(frame_->nb_samples) / frame_->sample_rate;
            return true;
        }
        if (received != AVERROR(EAGAIN) || !SendPacket()) bad++;
    }
    return false;
}

// False when the packet was bad and skipped.
bool StreamDecoder::SendPacket() {
    if (drained_) return false;
    const uint64_t before = Place();
    int read = 0;
    do {
        av_packet_unref(packet_.get());
        read = av_read_frame(format_.get(), packet_.get());
    } while (read >= 0 && packet_->stream_index != stream_->index);
    drained_ = read < 0;
    if (!drained_) bytes_ += static_cast<uint64_t>(packet_->size);
    // The first step has read what the format was recognized by.
    if (before > begin_) longestStep_ = std::max(longestStep_, Place() - before);
    const int sent = avcodec_send_packet(decoder_.get(), drained_ ? nullptr : packet_.get());
    av_packet_unref(packet_.get());
    return sent >= 0;
}

const AVFrame* StreamDecoder::Next() {
    if (held_ || Decode()) {
        held_ = false;
        return frame_.get();
    }
    return nullptr;
}

uint64_t StreamDecoder::Place() const {
    return begin_ + static_cast<uint64_t>(std::max<int64_t>(avio_tell(io_.get()), 0));
}

uint64_t StreamDecoder::BytesAhead() const {
    return buffer_.BytesRead() - std::min(buffer_.BytesRead(), Place()) + buffer_.Available();
}

uint32_t StreamDecoder::Type() const {
    switch (stream_->codecpar->codec_id) {
        case AV_CODEC_ID_MP3:
            return BASS_CTYPE_STREAM_MP3;
        case AV_CODEC_ID_AAC:
            return BASS_CTYPE_STREAM_AAC;
        case AV_CODEC_ID_FLAC:
            return BASS_CTYPE_STREAM_FLAC;
        case AV_CODEC_ID_VORBIS:
            return BASS_CTYPE_STREAM_OGG;
        case AV_CODEC_ID_OPUS:
            return BASS_CTYPE_STREAM_OPUS;
        default:
            return BASS_CTYPE_STREAM;
    }
}

}  // namespace hullrider
