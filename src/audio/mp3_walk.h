// Walks from frame header to frame header through an MP3 file without decoding, and so knows exactly which time lies
// where: neither a table of contents (in hundredths of the file) nor a bit rate tells that. Used by the thread that has
// the reader.
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
    uint32_t samples = 0;  // a channel
    uint32_t bytes = 0;    // with the header
    uint32_t side = 0;     // bytes of side information after the header, when there is no checksum
};

// Layer III only; nothing for a "free" bit rate, which does not tell where the frame ends.
std::optional<Mp3Header> ParseMp3Header(uint32_t word);

// What a frame without sound says of those that follow; 0: nothing.
struct Mp3Table {
    Mp3Header header;      // of this frame
    uint32_t frames = 0;   // that follow
    uint32_t bytes = 0;    // with this one
    uint32_t padding = 0;  // samples added behind the sound, if the encoder tells that
};

// Nothing when the bytes are not just such a frame.
std::optional<Mp3Table> ParseMp3Table(std::string_view frame);

class Mp3Walk {
public:
    // `pos`: the file's byte at which the frame of the stream's `timestamp` begins.
    Mp3Walk(AVFormatContext& format, AVStream& stream, int64_t pos, int64_t timestamp)
        : format_(&format), stream_(&stream), pos_(pos), timestamp_(timestamp) {}

    // The file's byte at which there is a frame, here or behind junk. Before any walking.
    std::optional<int64_t> FindFrame();

    // Walks on until after `timestamp`, and enters what it passes in the stream's index, from which FFmpeg seeks. The
    // file is left at any place.
    void GoBeyond(int64_t timestamp);

    // The timestamp at which the sound ends, by the table in front of where the walk began; nothing when there is none,
    // or none that fits the file, as after a download that broke off. Before any walking.
    std::optional<int64_t> TableEnd();

    // The same by walking there: to the end of the file, or to where 16 MB follow without a frame; what lies behind
    // those is not looked at. Nothing when there is no frame, or the file cannot be read.
    struct End {
        int64_t timestamp;
        bool junkFollows;  // those megabytes, as in a download whose end was never filled in
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
