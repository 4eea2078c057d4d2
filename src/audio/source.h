// What a channel plays: something that yields stereo frames at the mixing rate. A source is used by one thread at a
// time, the decoder thread that has its channel; Length and LoopLength may be asked from any.
//
// Its own frames, in which places and lengths are told, are those of the file: at the file's sample rate, whatever the
// mixing rate is.
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
    uint32_t channels = 0;  // of the file; what Read yields is always stereo
    uint32_t type = 0;      // one of the BASS_CTYPE values
};

struct SourceRead {
    size_t frames = 0;   // written
    bool atEnd = false;  // nothing follows; never so for a source that loops, unless it is broken
};

// Where the next frame of a source lies, and how many own frames a mixed frame is from there on.
struct SourcePlace {
    double frame = 0.0;
    double pace = 1.0;
};

class Source {
public:
    virtual ~Source() = default;

    virtual SourceFormat Format() const = 0;
    // In own frames. Known from the start, perhaps as an estimate, which gives way to the truth when the end is
    // reached.
    virtual int64_t Length() const = 0;
    // The period after which a looping source repeats, in own frames; 0 while it has not come round yet.
    virtual int64_t LoopLength() const = 0;
    // Where a looping source goes on after its end.
    virtual int64_t LoopStart() const { return 0; }
    // The place of an own frame that was counted on through all repeats.
    int64_t Fold(int64_t frame) const {
        const int64_t start = LoopStart(), loop = LoopLength();
        return loop > 0 && frame >= start + loop ? start + (frame - start) % loop : frame;
    }

    // Yields up to `frames` frames at the mixing rate. Fewer than asked, and not at the end: what there is for now.
    virtual SourceRead Read(float* out, size_t frames) = 0;
    // The next Read yields from own frame `frame` on. False: the source is broken, and at its end.
    virtual bool Seek(int64_t frame) = 0;
    // As Seek, but to sound from there as if it had been playing on, for a place that is about to be heard.
    virtual bool Rejoin(int64_t frame) { return Seek(frame); }

    // Any thread: whether it goes on at its end with its start; heard with the next read.
    virtual void SetLoop(bool) {}

    // What the file says of itself.
    virtual TagBlocks Tags() const { return {}; }

    // Any thread: reading ends as soon as the system lets it, and so does all that this source yields. For a source
    // that is going to be freed, perhaps while it waits for a drive that is gone.
    virtual void Cancel() {}
    // For a source whose frames cannot be counted on from where it last was: where the next one lies.
    virtual std::optional<SourcePlace> Place() { return std::nullopt; }
    // How far to decode ahead.
    virtual uint32_t AheadMs() const { return 2000; }

    // Any thread: the tempo of a source that has one, as OpenTempoSource makes.
    virtual bool SetTempo(float) { return false; }
    virtual std::optional<float> Tempo() const { return std::nullopt; }

    // Any thread: the fonts that a source sounds through from now on, and whether it has had none until now. Only a
    // MIDI source takes any; others return false.
    virtual bool SetFonts(const FontList&) { return false; }
    virtual bool LacksFonts() const { return false; }
};

struct SourceRequest {
    std::string path;  // UTF-8
    uint32_t mixRate = 0;
    bool loop = false;
};

// Each opens a file, or returns null and leaves a BASS_ERROR code. Any thread.
std::unique_ptr<Source> OpenStreamSource(const SourceRequest& request, const FontList& fonts, int& error);
std::unique_ptr<Source> OpenModuleSource(const SourceRequest& request, int& error);

// The kinds of OpenStreamSource, told apart by the file's first bytes.
std::unique_ptr<Source> OpenFfmpegSource(const SourceRequest& request, int& error);
std::unique_ptr<Source> OpenMidiSource(const SourceRequest& request, const FontList& fonts, int& error);

}  // namespace hullrider
