// What a channel plays: it yields stereo frames at the mixing rate. A source is used by one thread at a time, the
// decoder thread that has its channel; Length and LoopLength may be called from any.
//
// Its own frames, used for positions and lengths, are those of the file at the file's sample rate, whatever the mixing
// rate.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "audio/fonts.h"
#include "audio/tags.h"

namespace hullrider {

struct SourceFormat {
    uint32_t rate = 0;      // Hz
    uint32_t channels = 0;  // of the file; Read always yields stereo
    uint32_t type = 0;      // one of the BASS_CTYPE values
};

struct SourceRead {
    size_t frames = 0;   // written
    bool atEnd = false;  // nothing follows; for a looping source only if it is broken
};

// The own frame of the next Read, and how many own frames one mixed frame is from there on.
struct SourcePlace {
    double frame = 0.0;
    double pace = 1.0;
};

class Source {
public:
    virtual ~Source() = default;

    virtual SourceFormat Format() const = 0;
    // In own frames. Known from the start, possibly as an estimate that is corrected at the end.
    virtual int64_t Length() const = 0;
    // The period of a looping source, in own frames; 0 until it has come around once.
    virtual int64_t LoopLength() const = 0;
    // Where a looping source continues after its end.
    virtual int64_t LoopStart() const { return 0; }
    // The position for an own frame counted on through all repeats.
    int64_t Fold(int64_t frame) const {
        const int64_t start = LoopStart(), loop = LoopLength();
        return loop > 0 && frame >= start + loop ? start + (frame - start) % loop : frame;
    }

    // Yields up to `frames` frames at the mixing rate. Fewer, when not at the end: no more are available now.
    virtual SourceRead Read(float* out, size_t frames) = 0;
    // The next Read yields from own frame `frame` on. False: the source is broken, and at its end.
    virtual bool Seek(int64_t frame) = 0;
    // As Seek, but sounds as if it had been playing up to there: for a place that is about to be heard.
    virtual bool Rejoin(int64_t frame) { return Seek(frame); }

    // Any thread: whether it restarts at its end; takes effect with the next read.
    virtual void SetLoop(bool) {}

    // The file's tags.
    virtual TagBlocks Tags() const { return {}; }
    // Any thread: tags that change as it plays, as of own frame `frame`.
    virtual TagBlocks TagsAt(int64_t) const { return {}; }

    // Any thread: ends reading as soon as the system allows, and with it everything that this source yields. For a
    // source about to be freed, possibly while it waits for a lost drive.
    virtual void Cancel() {}
    // For a source whose position cannot be counted on from the last one: where its next frame lies.
    virtual std::optional<SourcePlace> Place() { return std::nullopt; }
    // How far to decode ahead.
    virtual uint32_t AheadMs() const { return 2000; }
    // How much must be ready before it begins to sound, and to sound again after it has run dry. 0: whatever there is.
    virtual uint32_t RefillMs() const { return 0; }
    // Before each Read: how many frames lie ahead that were not heard yet.
    virtual void SetAhead(size_t) {}
    // Any thread: bytes that were received ahead, and whether more are being received.
    virtual size_t BytesAhead() const { return 0; }
    virtual bool IsConnected() const { return false; }
    // Any thread: kbit/s, 0 when it is not known.
    virtual uint32_t BitRate() const { return 0; }

    // Any thread: the tempo, for a source made by OpenTempoSource.
    virtual bool SetTempo(float) { return false; }
    virtual std::optional<float> Tempo() const { return std::nullopt; }

    // Any thread: the fonts to use from now on, and whether it has had none yet. Only for MIDI sources; others return
    // false.
    virtual bool SetFonts(const FontList&) { return false; }
    virtual bool LacksFonts() const { return false; }
};

struct SourceRequest {
    std::string path;  // UTF-8
    uint32_t mixRate = 0;
    bool loop = false;
};

// Each opens a file; on failure returns null and sets a BASS_ERROR code. Any thread.
std::unique_ptr<Source> OpenStreamSource(const SourceRequest& request, const FontList& fonts, int& error);
std::unique_ptr<Source> OpenModuleSource(const SourceRequest& request, int& error);

// The implementations of OpenStreamSource, selected by the file's first bytes.
std::unique_ptr<Source> OpenFfmpegSource(const SourceRequest& request, int& error);
std::unique_ptr<Source> OpenMidiSource(const SourceRequest& request, const FontList& fonts, int& error);

}  // namespace hullrider
