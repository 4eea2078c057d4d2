#include <algorithm>
#include <atomic>
#include <cmath>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "audio/bass.h"
#include "audio/loudness.h"
#include "audio/midi_chase.h"
#include "audio/midi_file.h"
#include "audio/ring.h"
#include "audio/source.h"
#include "audio/synth.h"
#include "platform/files.h"

namespace hullrider {

namespace {

constexpr size_t kMaxFileBytes = size_t{32} << 20;
constexpr double kReleaseSeconds = 1.5;   // for the last notes and their reverb
constexpr size_t kMostNotesAtOnce = 256;  // of a block; FluidSynth sounds no more
constexpr int64_t kBlockFrames = 64;      // FluidSynth's own; events take effect at its beginning

// Fonts differ in loudness by 10 dB and more, and songs do too. Each song is brought to the level at which recorded
// music lies, as far as that is no caricature of a soft piece or of a font that has few of its instruments.
constexpr double kCommonLkfs = -19.0, kMostDb = 12.0;
constexpr int kExcerpts = 5;
constexpr double kExcerptSeconds = 0.8;
constexpr size_t kMostEventsLevelled = 50'000;  // in the excerpts; more is no music

constexpr double kPrerollSeconds = 1.0;  // for held notes to come into their state, and the reverb

enum class Notes { kCut, kHeld };

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
    bool Rejoin(int64_t frame) override;
    bool SetFonts(const FontList& fonts) override;
    bool LacksFonts() const override { return lacksFonts_; }

private:
    int64_t FrameOf(const MidiEvent& event) const { return static_cast<int64_t>(event.seconds * rate_); }
    bool TakeNewFonts();
    float GainOfSong();
    void GoTo(int64_t frame, Notes notes);
    size_t RenderSong(float* out, size_t frames);
    void SendEventsBefore(int64_t frame);
    size_t RenderTo(int64_t frame, float* out);

    uint32_t rate_;
    bool loop_;
    MidiSong song_;
    Synth synth_;
    int64_t length_ = 0;
    int64_t position_ = 0;
    size_t next_ = 0;  // of song_.events

    std::map<std::string, float> gains_;  // by the first font's path

    std::atomic<bool> lacksFonts_{true};
    std::mutex fontMutex_;
    std::optional<FontList> fonts_;  // to be taken into use
};

SourceRead MidiSource::Read(float* out, size_t frames) {
    if (TakeNewFonts()) GoTo(position_, Notes::kHeld);
    size_t done = 0;
    while (done < frames) {
        if (position_ >= length_ && (!loop_ || !Seek(0))) return {done, true};
        done += RenderSong(out + done * kStereo, frames - done);
    }
    return {done, false};
}

// Up to `frames` frames, but not past the song's end.
size_t MidiSource::RenderSong(float* out, size_t frames) {
    const int64_t end = std::min(length_, position_ + static_cast<int64_t>(frames));
    size_t done = 0;
    while (position_ < end) {
        SendEventsBefore(position_ + kBlockFrames);
        // On to the block that holds the next event, or as far as is wanted.
        int64_t stop = end;
        if (next_ < song_.events.size()) {
            const int64_t blocks = (FrameOf(song_.events[next_]) - position_) / kBlockFrames;
            stop = std::min(stop, position_ + std::max<int64_t>(1, blocks) * kBlockFrames);
        }
        done += RenderTo(stop, out + done * kStereo);
    }
    return done;
}

size_t MidiSource::RenderTo(int64_t frame, float* out) {
    const auto count = static_cast<size_t>(frame - position_);
    synth_.Render(out, count);
    position_ = frame;
    return count;
}

void MidiSource::SendEventsBefore(int64_t frame) {
    size_t struck = 0;
    for (; next_ < song_.events.size() && FrameOf(song_.events[next_]) < frame; next_++) {
        const MidiEvent& event = song_.events[next_];
        if ((event.status & 0xF0) == 0x90 && event.data[1] > 0 && ++struck > kMostNotesAtOnce) continue;
        if (event.status == 0xF0) {
            synth_.SendSysex(song_.sysex[event.sysex].data(), song_.sysex[event.sysex].size());
        } else {
            synth_.Send(event.status, event.data[0], event.data[1]);
        }
    }
}

bool MidiSource::Seek(int64_t frame) {
    TakeNewFonts();
    GoTo(frame, Notes::kCut);
    return true;
}

bool MidiSource::Rejoin(int64_t frame) {
    TakeNewFonts();
    const int64_t preroll = std::min(frame, static_cast<int64_t>(kPrerollSeconds * rate_));
    GoTo(frame - preroll, Notes::kHeld);
    std::vector<float> dropped(static_cast<size_t>(preroll) * kStereo);
    RenderSong(dropped.data(), static_cast<size_t>(preroll));
    return true;
}

void MidiSource::GoTo(int64_t frame, Notes notes) {
    synth_.Reset();
    const double seconds = static_cast<double>(frame) / rate_;
    const auto earlier = [](const MidiEvent& event, double limit) { return event.seconds < limit; };
    const auto first = std::lower_bound(song_.events.begin(), song_.events.end(), seconds, earlier);
    next_ = static_cast<size_t>(first - song_.events.begin());
    ChaseMidi(song_, next_, synth_);
    synth_.DropUnusedSamples();
    if (notes == Notes::kHeld) StrikeHeldNotes(song_, next_, synth_);
    position_ = frame;
}

bool MidiSource::SetFonts(const FontList& fonts) {
    const std::lock_guard lock(fontMutex_);
    fonts_ = fonts;
    return true;
}

// True when there were any: the synthesizer is anywhere then.
bool MidiSource::TakeNewFonts() {
    std::optional<FontList> fonts;
    {
        const std::lock_guard lock(fontMutex_);
        fonts.swap(fonts_);
    }
    if (!fonts || !synth_.UseFonts(*fonts)) return false;
    lacksFonts_ = !synth_.HasFonts();
    if (lacksFonts_) return true;
    const auto [gain, unknown] = gains_.try_emplace(fonts->front().font->path, 1.0f);
    if (unknown) gain->second = GainOfSong();
    synth_.SetGain(gain->second);
    return true;
}

// What brings the song through the fonts in use to the common level, by how loud some excerpts are.
float MidiSource::GainOfSong() {
    const int64_t place = position_;
    synth_.SetGain(1.0f);
    synth_.SetDraft(true);
    Loudness loudness(rate_);
    std::vector<float> excerpt(static_cast<size_t>(kExcerptSeconds * rate_) * kStereo);
    size_t events = 0;
    for (int i = 0; i < kExcerpts && events < kMostEventsLevelled; i++) {
        GoTo(static_cast<int64_t>((i + 0.5) / kExcerpts * song_.seconds * rate_), Notes::kHeld);
        const size_t first = next_;
        loudness.Add(excerpt.data(), RenderSong(excerpt.data(), excerpt.size() / kStereo));
        events += next_ - first;
    }
    synth_.SetDraft(false);
    position_ = place;
    const std::optional<double> lkfs = loudness.Lkfs();
    if (!lkfs) return 1.0f;
    const double db = std::clamp(kCommonLkfs - *lkfs, -kMostDb, kMostDb);
    return static_cast<float>(std::pow(10.0, db / 20.0));
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
