// Walks an MP3 file from frame header to frame header without decoding, and so maps time to file positions exactly,
// which neither a table of contents (in hundredths of the file) nor a bit rate allows. Used by the reader's thread.
//
// Frame headers: ISO/IEC 11172-3, 2.4.1.3, and 13818-3 for the low sample rates; 2.5 is the usual extension of it. The
// table before the first frame: "Xing" or "Info", with the delays that LAME adds
// (gabriel.mp3-tech.org/mp3infotag.html).
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

struct AVFormatContext;
struct AVStream;

namespace hullrider {

struct Mp3Header {
    uint32_t rate = 0;     // Hz
    uint32_t samples = 0;  // per channel
    uint32_t bytes = 0;    // including the header
    uint32_t side = 0;     // bytes of side information after the header, when there is no checksum
};

// Layer III only. Nothing for a "free" bit rate, whose frame size is not known.
std::optional<Mp3Header> ParseMp3Header(uint32_t word);

// The counts in a silent first frame; 0: not given.
struct Mp3Table {
    Mp3Header header;      // of this frame
    uint32_t frames = 0;   // frames that follow
    uint32_t bytes = 0;    // including this one
    uint32_t padding = 0;  // samples appended to the sound, if the encoder says so
};

// Nothing when the bytes are not exactly such a frame.
std::optional<Mp3Table> ParseMp3Table(std::string_view frame);

class Mp3Walk {
public:
    // `pos`: the file offset of the frame with the stream's `timestamp`.
    Mp3Walk(AVFormatContext& format, AVStream& stream, int64_t pos, int64_t timestamp)
        : format_(&format), stream_(&stream), pos_(pos), timestamp_(timestamp) {}

    // The file offset of a frame, here or after junk. Only before any walking.
    std::optional<int64_t> FindFrame();

    // Walks until after `timestamp`, and enters the frames in the stream's index, which FFmpeg uses for seeking. The
    // file position is undefined afterwards.
    void GoBeyond(int64_t timestamp);

    // The timestamp at which the sound ends, by the table before the first frame. Nothing when there is no table, or it
    // does not fit the file, as in a truncated download. Only before any walking.
    std::optional<int64_t> TableEnd();

    // The same by walking: to the end of the file, or up to 16 MB without a frame; anything after those is ignored.
    // Nothing when there is no frame, or the file cannot be read.
    struct End {
        int64_t timestamp;
        bool junkFollows;  // those 16 MB, as in a download that was preallocated but not finished
    };
    std::optional<End> FindEnd();

private:
    std::optional<Mp3Table> ReadTable();
    bool Step();
    bool FindNext();
    int64_t Duration(int64_t samples, const Mp3Header& header) const;
    std::optional<Mp3Header> HeaderAt(int64_t pos);

    AVFormatContext* format_;
    AVStream* stream_;
    int64_t pos_, timestamp_;
    uint32_t frames_ = 0;
};

}  // namespace hullrider
