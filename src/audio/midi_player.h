// One synthesizer on its way through a song. One thread at a time; the song must outlive it.
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

    // Sounds through these fonts from the next GoTo on. False when none can be loaded, or there is not enough memory:
    // then all is as before, which is silence before the first time.
    bool UseFonts(const FontList& fonts);
    bool HasFonts() const { return synth_ && synth_->HasFonts(); }

    // For one that has fonts.
    Synth& TheSynth() { return *synth_; }

    // Where the next frame lies, and how many of the song's events lie before it.
    int64_t Position() const { return position_; }
    size_t EventsPassed() const { return next_; }

    // The synthesizer as it would be had it played up to there: silent, or with the notes that are held then struck.
    enum class Notes { kCut, kHeld };
    void GoTo(int64_t frame, Notes notes);

    // The frames up to that one, interleaved stereo; after the song's last event what dies away.
    void RenderTo(int64_t frame, float* out);

private:
    int64_t FrameOf(const MidiEvent& event) const { return static_cast<int64_t>(event.seconds * rate_); }
    void SendEventsBefore(int64_t frame);
    void ChooseProgram(uint8_t channel);

    const MidiSong& song_;
    uint32_t rate_;
    std::unique_ptr<Synth> synth_;
    int64_t position_ = 0;
    int64_t origin_ = 0;  // where it last went to; a block begins there
    size_t next_ = 0;     // of the song's events

    // A program is chosen when a note wants it, and only so many are.
    std::array<std::optional<uint8_t>, 16> programs_;
    double programsLeft_ = 0.0;
    int64_t programsCountedAt_ = 0;
};

}  // namespace hullrider
