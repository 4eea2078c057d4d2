#include "audio/mp4_tables.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <string_view>
#include <utility>
#include <vector>

#include "audio/byte_reader.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr int64_t kFewSamples = 400'000;  // at most 20 MB of records
constexpr int64_t kLeastSampleBytes = 16;
constexpr int64_t kLeastGroup = 160;  // FFmpeg's smallest group of samples
constexpr int64_t kFewBoxes = 100'000;
constexpr int64_t kAbsurd = int64_t{1} << 40;
constexpr int kMaxDepth = 12;  // FFmpeg gives up before
constexpr size_t kPieceBytes = 512;

// The boxes in which FFmpeg looks for tables. So are `stsd` and `meta`, but their children start a little later.
constexpr std::array<std::string_view, 19> kContainers{"moov", "trak", "mdia", "minf", "stbl", "moof", "traf",
                                                       "udta", "edts", "tref", "wave", "dinf", "mvex", "sinf",
                                                       "schi", "ilst", "iprp", "ipco", "hoov"};

// Reads a file in small pieces, because the relevant boxes may be far apart, or packed by the thousand.
class FilePieces {
public:
    explicit FilePieces(const std::string& path) {
        in_.rdbuf()->pubsetbuf(nullptr, 0);
        in_.open(PathFromUtf8(path), std::ios::binary | std::ios::ate);
        if (in_) bytes_ = in_.tellg();
    }

    int64_t Bytes() const { return bytes_; }
    uint32_t Number(int64_t place) { return ByteReader{At(place, 4)}.BigEndian(4); }
    std::string Letters(int64_t place) { return std::string(At(place, 4)); }

private:
    // Fewer at the end of the file. Valid until the next call.
    std::string_view At(int64_t place, size_t count) {
        if (place < begin_ || place + static_cast<int64_t>(count) > begin_ + static_cast<int64_t>(held_.size())) {
            held_.resize(kPieceBytes);
            in_.clear();
            in_.seekg(place);
            in_.read(held_.data(), kPieceBytes);
            held_.resize(static_cast<size_t>(std::max<std::streamsize>(0, in_.gcount())));
            begin_ = place;
        }
        return std::string_view(held_).substr(static_cast<size_t>(place - begin_), count);
    }

    std::ifstream in_;
    int64_t bytes_ = 0;
    std::string held_;
    int64_t begin_ = 0;  // of the piece in memory
};

struct Box {
    std::string type;
    int64_t begin, end;  // of its content
};

// The boxes of a track.
struct Track {
    int64_t samples = 0;
    int64_t chunks = 0;
    std::vector<std::pair<int64_t, int64_t>> runs;  // sample-to-chunk tables: position, entries
    bool sound = false, otherThanSound = false;
    bool timed = false, unevenlyTimed = false;

    // FFmpeg treats sound whose samples all last one tick as uncompressed and keeps no record of each.
    bool IsGrouped() const { return sound && !otherThanSound && timed && !unevenlyTimed; }
};

class BoxWalk {
public:
    explicit BoxWalk(FilePieces& file) : file_(file), boxesLeft_(kFewBoxes + file.Bytes() / 4) {}

    // The number of samples that FFmpeg would keep a record of.
    int64_t CountRecords() {
        ReadBoxes(0, file_.Bytes(), 0);
        LeaveTrack();
        return boxesLeft_ < 0 ? kAbsurd : records_;
    }

private:
    void ReadBoxes(int64_t begin, int64_t end, int depth) {
        while (end - begin >= 8 && boxesLeft_-- > 0) {
            int64_t size = file_.Number(begin), head = 8;
            const std::string type = file_.Letters(begin + 4);
            if (size == 1) {
                size = static_cast<int64_t>(uint64_t{file_.Number(begin + 8)} << 32 | file_.Number(begin + 12));
                head = 16;
            }
            if (size == 0) size = end - begin;
            if (size < head) break;
            const int64_t next = begin + std::min(size, end - begin);
            if (head <= next - begin && depth < kMaxDepth) ReadBox({type, begin + head, next}, depth);
            begin = next;
        }
    }

    void ReadBox(const Box& box, int depth) {
        if (box.type == "trak") {
            const Track around = std::exchange(track_, Track{});
            ReadBoxes(box.begin, box.end, depth + 1);
            LeaveTrack();
            track_ = around;
        } else if (std::find(kContainers.begin(), kContainers.end(), box.type) != kContainers.end()) {
            ReadBoxes(box.begin, box.end, depth + 1);
        } else if (box.type == "meta") {
            ReadBoxes(FirstInMeta(box), box.end, depth + 1);
        } else if (box.type == "stsd") {
            ReadDescriptions(box, depth + 1);
        } else if (box.type == "free" && file_.Letters(box.begin + 4) == "mvhd") {
            ReadBoxes(box.begin, box.end, depth + 1);  // FFmpeg accepts it in place of a `moov`
        } else {
            ReadTable(box);
        }
    }

    void ReadTable(const Box& box) {
        if (box.type == "stsz" || box.type == "stz2") track_.samples += file_.Number(box.begin + 8);
        if (box.type == "trun") records_ += file_.Number(box.begin + 4);
        if (box.type == "stco" || box.type == "co64") track_.chunks += file_.Number(box.begin + 4);
        if (box.type == "stsc") {
            const int64_t held = std::max<int64_t>(0, box.end - box.begin - 8) / 12;
            track_.runs.emplace_back(box.begin + 8, std::min<int64_t>(file_.Number(box.begin + 4), held));
        }
        if (box.type == "stts") {
            track_.timed = true;
            if (file_.Number(box.begin + 4) != 1 || file_.Number(box.begin + 12) != 1) track_.unevenlyTimed = true;
        }
        if (box.type == "hdlr") {
            const std::string kind = file_.Letters(box.begin + 8);
            if (kind == "soun") track_.sound = true;
            if (kind == "vide" || kind == "subp" || kind == "clcp") track_.otherThanSound = true;
        }
    }

    // The children may follow a version field, or not.
    int64_t FirstInMeta(const Box& box) {
        int64_t begin = box.begin;
        while (box.end - begin >= 8 && file_.Letters(begin + 4) != "hdlr" && boxesLeft_-- > 0) begin += 4;
        return begin;
    }

    // A description is a box with children after its own fields, for sound in three versions, or for pictures.
    void ReadDescriptions(const Box& box, int depth) {
        for (int64_t begin = box.begin + 8; box.end - begin >= 8 && boxesLeft_-- > 0;) {
            const int64_t size = file_.Number(begin);
            if (size < 8) return;
            const int64_t next = begin + std::min(size, box.end - begin);
            for (const int64_t head : {36, 52, 72, 86}) ReadBoxes(begin + head, next, depth);
            begin = next;
        }
    }

    void LeaveTrack() {
        if (track_.IsGrouped()) {
            for (const auto& [place, entries] : track_.runs) CountGroups(place, entries);
        } else {
            records_ += track_.samples;
        }
    }

    // An entry: its first chunk, the samples per chunk, a description.
    void CountGroups(int64_t place, int64_t entries) {
        for (int64_t i = 0; i < entries && records_ < kAbsurd; i++, place += 12) {
            const int64_t first = file_.Number(place), samples = file_.Number(place + 4);
            const int64_t next = i + 1 < entries ? file_.Number(place + 12) : track_.chunks + 1;
            records_ += std::max<int64_t>(1, next - first) * (samples / kLeastGroup + 1);
        }
    }

    FilePieces& file_;
    int64_t boxesLeft_;  // more than any honest file has
    int64_t records_ = 0;
    Track track_;
};

}  // namespace

bool HasAbsurdMp4Tables(const std::string& path) {
    FilePieces file(path);
    return BoxWalk(file).CountRecords() > std::max(kFewSamples, file.Bytes() / kLeastSampleBytes);
}

}  // namespace hullrider
