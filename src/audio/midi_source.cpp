#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>

#include "audio/bass.h"
#include "audio/midi_chase.h"
#include "audio/midi_file.h"
#include "audio/ring.h"
#include "audio/source.h"
#include "audio/synth.h"
#include "platform/files.h"

namespace hullrider {

namespace {

constexpr size_t kMaxFileBytes = size_t{32} << 20;
constexpr double kReleaseSeconds = 1.5;  // for the last notes and their reverb
constexpr int64_t kBlockFrames = 64;     // FluidSynth's own; events take effect at its beginning

class MidiSource : public Source {
public:
    MidiSource(const SourceRequest& request, MidiSong song, const FontList& fonts)
        : rate_(request.mixRate), loop_(request.loop), song_(std::move(song)), synth_(rate_), fonts_(fonts) {
        length_ = static_cast<int64_t>((song_.seconds + kReleaseSeconds) * rate_);
    }

    bool Good() const { return synth_.Good(); }

    SourceFormat Format() const override { return {rate_, kStereo, BASS_CTYPE_STREAM_MIDI}; }
    int64_t Length() const override { return length_; }
    int64_t LoopLength() const override { return loop_ ? length_ : 0; }
    SourceRead Read(float* out, size_t frames) override;
    bool Seek(int64_t frame) override;
    bool SetFonts(const FontList& fonts) override;
    bool LacksFonts() const override { return lacksFonts_; }

private:
    int64_t FrameOf(const MidiEvent& event) const { return static_cast<int64_t>(event.seconds * rate_); }
    void TakeNewFonts();
    void SendEventsBefore(int64_t frame);
    size_t RenderTo(int64_t frame, float* out);

    uint32_t rate_;
    bool loop_;
    MidiSong song_;
    Synth synth_;
    int64_t length_ = 0;
    int64_t position_ = 0;
    size_t next_ = 0;  // of song_.events

    std::atomic<bool> lacksFonts_{true};
    std::mutex fontMutex_;
    std::optional<FontList> fonts_;  // to be taken into use
};

SourceRead MidiSource::Read(float* out, size_t frames) {
    TakeNewFonts();
    size_t done = 0;
    while (done < frames) {
        if (position_ >= length_ && (!loop_ || !Seek(0))) return {done, true};
        SendEventsBefore(position_ + kBlockFrames);
        // On to the block that holds the next event, or as far as is wanted.
        int64_t stop = std::min(length_, position_ + static_cast<int64_t>(frames - done));
        if (next_ < song_.events.size()) {
            const int64_t blocks = (FrameOf(song_.events[next_]) - position_) / kBlockFrames;
            stop = std::min(stop, position_ + std::max<int64_t>(1, blocks) * kBlockFrames);
        }
        done += RenderTo(stop, out + done * kStereo);
    }
    return {done, false};
}

size_t MidiSource::RenderTo(int64_t frame, float* out) {
    const auto count = static_cast<size_t>(frame - position_);
    synth_.Render(out, count);
    position_ = frame;
    return count;
}

void MidiSource::SendEventsBefore(int64_t frame) {
    for (; next_ < song_.events.size() && FrameOf(song_.events[next_]) < frame; next_++) {
        const MidiEvent& event = song_.events[next_];
        if (event.status == 0xF0) {
            synth_.SendSysex(song_.sysex.data() + event.sysexBegin, event.sysexLength);
        } else {
            synth_.Send(event.status, event.data[0], event.data[1]);
        }
    }
}

bool MidiSource::Seek(int64_t frame) {
    TakeNewFonts();
    synth_.Reset();
    const double seconds = static_cast<double>(frame) / rate_;
    const auto later = [](const MidiEvent& event, double limit) { return event.seconds < limit; };
    const auto first = std::lower_bound(song_.events.begin(), song_.events.end(), seconds, later);
    next_ = static_cast<size_t>(first - song_.events.begin());
    ChaseMidi(song_, next_, synth_);
    position_ = frame;
    return true;
}

bool MidiSource::SetFonts(const FontList& fonts) {
    const std::lock_guard lock(fontMutex_);
    fonts_ = fonts;
    return true;
}

void MidiSource::TakeNewFonts() {
    std::optional<FontList> fonts;
    {
        const std::lock_guard lock(fontMutex_);
        fonts.swap(fonts_);
    }
    if (!fonts) return;
    synth_.UseFonts(*fonts);
    lacksFonts_ = !synth_.HasFonts();
}

}  // namespace

std::unique_ptr<Source> OpenMidiSource(const SourceRequest& request, const FontList& fonts, int& error) {
    const std::optional<std::string> file = ReadWholeFile(request.path, kMaxFileBytes);
    std::optional<MidiSong> song;
    if (file) song = ReadMidiFile(*file);
    if (!song) {
        error = BASS_ERROR_FILEFORM;
        return nullptr;
    }
    auto source = std::make_unique<MidiSource>(request, std::move(*song), fonts);
    error = source->Good() ? BASS_OK : BASS_ERROR_MEM;
    if (error != BASS_OK) return nullptr;
    return source;
}

}  // namespace hullrider
