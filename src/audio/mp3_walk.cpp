#include "audio/mp3_walk.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "audio/byte_reader.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavformat/avio.h>
#include <libavutil/mathematics.h>
}

namespace hullrider {

namespace {

constexpr uint32_t kFramesAnEntry = 16;          // less than half a second, read and discarded after a seek
constexpr int64_t kMaxJunk = int64_t{16} << 20;  // contiguous bytes; enough for other content, such as pictures

constexpr uint32_t kBitrates1[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};  // kbit/s
constexpr uint32_t kBitrates2[] = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
constexpr uint32_t kRates[] = {44100, 48000, 32000};

constexpr int64_t kMostFrameBytes = 1441;                           // of Layer III
constexpr double kLeastByteRate = 900.0, kMostByteRate = 50'000.0;  // bytes per second; anything else is nonsense

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
    const bool mono = (word >> 6 & 3) == 3;
    header.side = full ? (mono ? 17 : 32) : (mono ? 9 : 17);
    return header;
}

std::optional<Mp3Table> ParseMp3Table(std::string_view frame) {
    constexpr uint32_t kHasFrames = 1, kHasBytes = 2, kHasPlaces = 4, kHasQuality = 8;
    ByteReader in{frame};
    const std::optional<Mp3Header> header = ParseMp3Header(in.BigEndian(4));
    if (!header || header->bytes != frame.size()) return {};
    in.Take(header->side);
    const std::string_view name = in.Take(4);
    if (name != "Xing" && name != "Info") return {};
    Mp3Table table{.header = *header};
    const uint32_t has = in.BigEndian(4);
    if ((has & kHasFrames) != 0) table.frames = in.BigEndian(4);
    if ((has & kHasBytes) != 0) table.bytes = in.BigEndian(4);
    if ((has & kHasPlaces) != 0) in.Take(100);
    if ((has & kHasQuality) != 0) in.Take(4);
    in.Take(4 + 17);  // the encoder's name, and loudness
    table.padding = in.BigEndian(3) & 0xFFF;
    return table;
}

// The table is in the frame that ends where the walk begins.
std::optional<Mp3Table> Mp3Walk::ReadTable() {
    std::string before(static_cast<size_t>(std::min(pos_, kMostFrameBytes)), '\0');
    const auto wanted = static_cast<int>(before.size());
    if (avio_seek(format_->pb, pos_ - wanted, SEEK_SET) < 0) return {};
    if (avio_read(format_->pb, reinterpret_cast<unsigned char*>(before.data()), wanted) != wanted) return {};
    for (size_t at = 0; at < before.size(); at++) {
        if (const auto table = ParseMp3Table(std::string_view(before).substr(at))) return table;
    }
    return {};
}

std::optional<int64_t> Mp3Walk::FindFrame() {
    return HeaderAt(pos_) || FindNext() ? std::optional(pos_) : std::nullopt;
}

void Mp3Walk::GoBeyond(int64_t timestamp) {
    while (timestamp_ <= timestamp && Step()) {
    }
}

std::optional<int64_t> Mp3Walk::TableEnd() {
    constexpr int64_t kDecoderDelay = 529;
    const int64_t place = avio_tell(format_->pb);
    const std::optional<Mp3Table> table = ReadTable();
    avio_seek(format_->pb, place, SEEK_SET);
    if (!table || table->frames == 0) return {};
    // Less than promised is a truncated file; more is another song appended.
    const int64_t held = avio_size(format_->pb) - (pos_ - table->header.bytes);
    const int64_t told = table->bytes > 0 ? table->bytes : held;
    const int64_t samples = int64_t{table->frames} * table->header.samples;
    const double byteRate = static_cast<double>(told) * table->header.rate / static_cast<double>(samples);
    if (std::abs(held - told) > told / 16 || byteRate < kLeastByteRate || byteRate > kMostByteRate) return {};
    // FFmpeg omits the padding when it omits the delay.
    const bool gapless = stream_->start_time != AV_NOPTS_VALUE && stream_->start_time > 0;
    const int64_t padding = gapless ? std::max<int64_t>(0, table->padding - kDecoderDelay) : 0;
    return timestamp_ + Duration(samples - padding, table->header);
}

std::optional<Mp3Walk::End> Mp3Walk::FindEnd() {
    const int64_t place = avio_tell(format_->pb);
    while (Step()) {
    }
    const bool readable = format_->pb->error == 0, atEnd = format_->pb->eof_reached != 0;
    avio_seek(format_->pb, place, SEEK_SET);
    return readable && frames_ > 0 ? std::optional(End{timestamp_, !atEnd}) : std::nullopt;
}

// Skips one frame. False when no more are found.
bool Mp3Walk::Step() {
    std::optional<Mp3Header> header = HeaderAt(pos_);
    if (!header && FindNext()) header = HeaderAt(pos_);
    if (!header) return false;
    if (frames_++ % kFramesAnEntry == 0) av_add_index_entry(stream_, pos_, timestamp_, 0, 0, AVINDEX_KEYFRAME);
    pos_ += header->bytes;
    timestamp_ += Duration(header->samples, *header);
    return true;
}

// In the stream's time base.
int64_t Mp3Walk::Duration(int64_t samples, const Mp3Header& header) const {
    return av_rescale_q(samples, {1, static_cast<int>(header.rate)}, stream_->time_base);
}

// Skips anything but frames: on to a header followed by another one, which is unlikely by chance.
bool Mp3Walk::FindNext() {
    uint32_t word = 0;
    avio_seek(format_->pb, pos_, SEEK_SET);
    for (int64_t at = pos_ - 3; at < pos_ + kMaxJunk && avio_feof(format_->pb) == 0; at++) {
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
