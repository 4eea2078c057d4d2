#include "audio/mp4_duration.h"

#include <algorithm>
#include <cstdio>
#include <optional>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/common.h>
#include <libavutil/dict.h>
}

namespace hullrider {

namespace {

int64_t WithoutPadding(const AVFormatContext& format, int64_t told) {
    const AVDictionaryEntry* tag = av_dict_get(format.metadata, "iTunSMPB", nullptr, 0);
    unsigned before = 0, after = 0;
    unsigned long long samples = 0;
    if (tag == nullptr || std::sscanf(tag->value, "%*x %x %x %llx", &before, &after, &samples) != 3) return told;
    // Another sum means that an edit list was applied already, or that the time unit is not a sample.
    const auto sound = static_cast<int64_t>(std::min<unsigned long long>(samples, INT64_MAX / 2));
    return sound > 0 && sound + before + after == told ? sound : told;
}

// The timestamp of the first packet that the file does not hold completely.
std::optional<int64_t> FirstMissing(AVFormatContext& format, AVStream& stream) {
    const int64_t bytes = avio_size(format.pb);
    std::optional<int64_t> missing;
    for (int i = avformat_index_get_entries_count(&stream) - 1; bytes > 0 && i >= 0; i--) {
        const AVIndexEntry* entry = avformat_index_get_entry(&stream, i);
        if (entry->pos <= bytes - entry->size) break;
        missing = entry->timestamp;
    }
    return missing;
}

}  // namespace

int64_t Mp4Duration(AVFormatContext& format, AVStream& stream, int64_t told, int64_t origin) {
    const std::optional<int64_t> missing = FirstMissing(format, stream);
    const int64_t held = missing ? std::max<int64_t>(0, av_sat_sub64(*missing, origin)) : told;
    return std::min(WithoutPadding(format, told), held);
}

}  // namespace hullrider
