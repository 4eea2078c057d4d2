#include "audio/mp3_walk.h"

#include <limits>

extern "C" {
#include <libavformat/avformat.h>
#include <libavformat/avio.h>
#include <libavutil/mathematics.h>
}

namespace hullrider {

namespace {

constexpr uint32_t kFramesAnEntry = 16;         // less than half a second, which is read and dropped after a jump
constexpr int64_t kMaxJunk = int64_t{8} << 20;  // bytes in all; covers what else files hold, such as pictures

constexpr uint32_t kBitrates1[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};  // kbit/s
constexpr uint32_t kBitrates2[] = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
constexpr uint32_t kRates[] = {44100, 48000, 32000};

}  // namespace

std::optional<Mp3Header> ParseMp3Header(uint32_t word) {
    const uint32_t version = word >> 19 & 3, layer = word >> 17 & 3;
    const uint32_t bitrate = word >> 12 & 15, rate = word >> 10 & 3, padding = word >> 9 & 1;
    if (word >> 21 != 0x7FF || version == 1 || layer != 1 || bitrate == 0 || bitrate == 15 || rate == 3) return {};
    const bool full = version == 3;
    Mp3Header header;
    header.rate = kRates[rate] >> (full ? 0 : version == 2 ? 1 : 2);
    header.samples = full ? 1152 : 576;
    header.bytes = header.samples / 8 * (full ? kBitrates1 : kBitrates2)[bitrate] * 1000 / header.rate + padding;
    return header;
}

void Mp3Walk::GoBeyond(int64_t timestamp) {
    while (timestamp_ <= timestamp && Step()) {
    }
}

std::optional<int64_t> Mp3Walk::FindEnd() {
    const int64_t place = avio_tell(format_->pb);
    while (Step()) {
    }
    const bool atEnd = format_->pb->eof_reached != 0 && format_->pb->error == 0;
    avio_seek(format_->pb, place, SEEK_SET);
    return atEnd ? std::optional(timestamp_) : std::nullopt;
}

// Passes one frame. False: no more of them are found.
bool Mp3Walk::Step() {
    std::optional<Mp3Header> header = HeaderAt(pos_);
    if (!header && FindNext()) header = HeaderAt(pos_);
    if (!header) return false;
    if (frames_++ % kFramesAnEntry == 0) av_add_index_entry(stream_, pos_, timestamp_, 0, 0, AVINDEX_KEYFRAME);
    pos_ += header->bytes;
    timestamp_ += av_rescale_q(header->samples, {1, static_cast<int>(header->rate)}, stream_->time_base);
    return true;
}

// Passes what is no frame: on to a header that another one follows, as chance would seldom have it.
bool Mp3Walk::FindNext() {
    uint32_t word = 0;
    avio_seek(format_->pb, pos_, SEEK_SET);
    for (int64_t at = pos_ - 3; junk_ < kMaxJunk && avio_feof(format_->pb) == 0; at++, junk_++) {
        word = word << 8 | static_cast<uint32_t>(avio_r8(format_->pb));
        const std::optional<Mp3Header> header = at < pos_ ? std::nullopt : ParseMp3Header(word);
        if (!header) continue;
        const std::optional<Mp3Header> next = HeaderAt(at + header->bytes);
        if (next && next->rate == header->rate) {
            pos_ = at;
            return true;
        }
        avio_seek(format_->pb, at + 4, SEEK_SET);
    }
    return false;
}

std::optional<Mp3Header> Mp3Walk::HeaderAt(int64_t pos) {
    if (avio_seek(format_->pb, pos, SEEK_SET) < 0) return {};
    const uint32_t word = avio_rb32(format_->pb);
    return avio_feof(format_->pb) != 0 ? std::nullopt : ParseMp3Header(word);
}

}  // namespace hullrider
