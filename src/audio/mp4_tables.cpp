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
    explicit BoxWalk(std::istream& in) : in_(in) {}

    // The samples told of by the boxes between two places of the file.
    int64_t CountSamples(int64_t begin, int64_t end, int depth = 0) {
        int64_t samples = 0;
        while (end - begin >= 8 && boxes_++ < kMaxBoxes) {
            const std::string bytes = Read(begin, 28);
            ByteReader box{bytes};
            int64_t size = box.BigEndian(4), head = 8;
            const std::string_view type = box.Take(4);
            if (size == 1) {
                size = static_cast<int64_t>(uint64_t{box.BigEndian(4)} << 32 | box.BigEndian(4));
                head = 16;
            }
            if (size == 0) size = end - begin;
            if (size < head) break;
            const int64_t next = begin + std::min(size, end - begin);
            if (type == "stsz" || type == "stz2" || type == "trun") {
                box.Take(type == "trun" ? 4 : 8);  // version, flags; the size of each
                samples += box.BigEndian(4);
            } else if (depth < kMaxDepth &&
                       std::find(kContainers.begin(), kContainers.end(), type) != kContainers.end()) {
                samples += CountSamples(begin + head, next, depth + 1);
            }
            begin = next;
        }
        return samples;
    }

private:
    std::string Read(int64_t place, size_t count) {
        std::string bytes(count, '\0');
        in_.clear();
        in_.seekg(place);
        in_.read(bytes.data(), static_cast<std::streamsize>(count));
        bytes.resize(static_cast<size_t>(std::max<std::streamsize>(0, in_.gcount())));
        return bytes;
    }

    std::istream& in_;
    int boxes_ = 0;
};

}  // namespace

bool HasAbsurdMp4Tables(const std::string& path) {
    std::ifstream in(PathFromUtf8(path), std::ios::binary | std::ios::ate);
    if (!in) return false;
    const int64_t bytes = in.tellg();
    const int64_t samples = BoxWalk(in).CountSamples(0, bytes);
    return samples > std::max(kFewSamples, bytes / kLeastSampleBytes);
}

}  // namespace hullrider
