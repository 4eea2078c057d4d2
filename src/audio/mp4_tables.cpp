#include "audio/mp4_tables.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <string_view>

#include "audio/byte_reader.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr int64_t kFewSamples = 400'000;  // need no more than 20 MB
constexpr int64_t kLeastSampleBytes = 16;
constexpr int kMaxDepth = 8;
constexpr int kMaxBoxes = 10'000;

// The boxes in which FFmpeg looks for tables.
constexpr std::array<std::string_view, 11> kContainers{"moov", "trak", "mdia", "minf", "stbl", "moof",
                                                       "traf", "udta", "edts", "tref", "wave"};

class BoxWalk {
public:
    BoxWalk(std::istream& in, int64_t bytes) : in_(in), bytes_(bytes) {}

    // The samples told of by the boxes between two places of the file.
    int64_t CountSamples(int64_t begin, int64_t end, int depth = 0) {
        int64_t samples = 0;
        while (end - begin >= 8 && boxes_++ < kMaxBoxes) {
            const std::string bytes = Read(begin, 28);
            ByteReader box{bytes};
            int64_t size = box.BigEndian(4), head = 8;
            const std::string_view type = box.Take(4);
            if (size == 1) {
                const uint64_t high = box.BigEndian(4);
                size = static_cast<int64_t>(high << 32 | box.BigEndian(4));
                head = 16;
            }
            if (size == 0) size = end - begin;
            if (size < head) break;
            const int64_t next = begin + std::min(size, end - begin);
            if (type == "stsz" || type == "stz2" || type == "trun") {
                box.Take(4);  // version, flags
                const int64_t sampleBytes = type == "stsz" ? box.BigEndian(4) : 0;
                if (type == "stz2") box.Take(4);  // the size of a size
                samples += Weigh(box.BigEndian(4), sampleBytes);
            } else if (depth < kMaxDepth &&
                       std::find(kContainers.begin(), kContainers.end(), type) != kContainers.end()) {
                samples += CountSamples(begin + head, next, depth + 1);
            }
            begin = next;
        }
        return samples;
    }

private:
    // Uncompressed sound has no table: one size for all, small as it is. `sampleBytes`: that size, or 0.
    int64_t Weigh(int64_t samples, int64_t sampleBytes) const {
        const bool held = sampleBytes > 0 && samples <= bytes_ / sampleBytes;
        return held ? samples * sampleBytes / kLeastSampleBytes : samples;
    }

    std::string Read(int64_t place, size_t count) {
        std::string bytes(count, '\0');
        in_.clear();
        in_.seekg(place);
        in_.read(bytes.data(), static_cast<std::streamsize>(count));
        bytes.resize(static_cast<size_t>(std::max<std::streamsize>(0, in_.gcount())));
        return bytes;
    }

    std::istream& in_;
    int64_t bytes_;  // of the file
    int boxes_ = 0;
};

}  // namespace

bool HasAbsurdMp4Tables(const std::string& path) {
    std::ifstream in(PathFromUtf8(path), std::ios::binary | std::ios::ate);
    if (!in) return false;
    const int64_t bytes = in.tellg();
    const int64_t samples = BoxWalk(in, bytes).CountSamples(0, bytes);
    return samples > std::max(kFewSamples, bytes / kLeastSampleBytes);
}

}  // namespace hullrider
