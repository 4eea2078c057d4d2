// One synthesizer playing through a song. One thread at a time; the song must outlive it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "audio/midi_file.h"
#include "audio/synth.h"

namespace hullrider {

class MidiPlayer {
public:
    MidiPlayer(const MidiSong& song, uint32_t rate) : song_(song), rate_(rate) {}
    ~MidiPlayer();
    MidiPlayer(const MidiPlayer&) = delete;
    MidiPlayer& operator=(const MidiPlayer&) = delete;

    // Uses these fonts from the next GoTo on. False when none can be loaded, or memory is short: then nothing changes,
    // which means silence the first time.
    bool UseFonts(const FontList& fonts);
    bool HasFonts() const { return synth_ && synth_->HasFonts(); }

    // Only when it has fonts.
    Synth& TheSynth() { return *synth_; }

    // The next frame, and how many of the song's events precede it.
    int64_t Position() const { return position_; }
    size_t EventsPassed() const { return next_; }

    // The synthesizer's state as if it had played up to there: silent, or with the notes then held started.
    enum class Notes { kCut, kHeld };
    void GoTo(int64_t frame, Notes notes);

    // Renders up to that frame, interleaved stereo; after the last event, the sound dying away.
    void RenderTo(int64_t frame, float* out);

private:
    int64_t FrameOf(const MidiEvent& event) const { return static_cast<int64_t>(event.seconds * rate_); }
    void SendEventsBefore(int64_t frame);
    void ChooseProgram(uint8_t channel);

    const MidiSong& song_;
    uint32_t rate_;
    std::unique_ptr<Synth> synth_;
    int64_t position_ = 0;
    int64_t origin_ = 0;  // target of the last GoTo; a block begins there
    size_t next_ = 0;     // of the song's events

    // A program is selected only when a note needs it, and only so often.
    std::array<std::optional<uint8_t>, 16> programs_;
    double programsLeft_ = 0.0;
    int64_t programsCountedAt_ = 0;
};

}  // namespace hullrider
