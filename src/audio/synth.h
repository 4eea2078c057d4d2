// One FluidSynth with reverb and chorus, silent on the console. One thread at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "audio/fonts.h"

struct _fluid_hashtable_t;
struct _fluid_synth_t;

namespace hullrider {

struct SynthDeleter {
    void operator()(_fluid_hashtable_t* settings) const;
    void operator()(_fluid_synth_t* synth) const;
};

class Synth {
public:
    explicit Synth(uint32_t rate);
    ~Synth();

    // False: out of memory; then nothing else may be called.
    bool Good() const { return synth_ != nullptr; }

    // Uses these fonts from the next note on; sounding notes go on. A font that cannot be loaded is skipped; if none
    // can, a line on the console says so, the current fonts stay, and the result is false.
    bool UseFonts(const FontList& fonts);
    bool HasFonts() const { return !loaded_.empty(); }
    const FontList& Fonts() const { return fonts_; }
    uint32_t Rate() const { return rate_; }

    // A gain factor from now on.
    void SetGain(float gain);
    // The same gradually, over that many frames.
    void GlideToGain(float gain, size_t frames);

    // Coarser from the next note on, for measuring rather than listening: half the work.
    void SetDraft(bool draft);

    // Silence, with every controller and program as after power-on. The samples in memory stay until the next
    // DropUnusedSamples, because most are needed again at once.
    void Reset();
    void DropUnusedSamples();
    // As right after it got its fonts, with no samples in memory; Reset makes it ready again.
    void Rest();
    // A channel message.
    void Send(uint8_t status, uint8_t data1, uint8_t data2);
    // A system exclusive message without its F0 and F7.
    void SendSysex(const uint8_t* bytes, size_t count);

    // Interleaved stereo.
    void Render(float* out, size_t frames);

    // For LoadFont: the font's number, negative on failure.
    int Load(const std::string& path);

private:
    struct Program {
        int font, bank, number;
    };

    void KeepSamples();
    void UnpinKept();
    void DropBlocks(size_t count);
    void ApplyGain(float* out, size_t frames);
    void NoteQuiet(const float* out, size_t frames);
    void ChangeProgram(int channel, int program);
    void UnloadRetired();

    std::unique_ptr<_fluid_hashtable_t, SynthDeleter> settings_;
    std::unique_ptr<_fluid_synth_t, SynthDeleter> synth_;
    FontList fonts_;
    std::vector<int> loaded_;   // their numbers
    std::vector<int> retired_;  // replaced, to be unloaded
    std::vector<Program> kept_;

    uint32_t rate_;
    float gain_ = 1.0f, targetGain_ = 1.0f;
    size_t glideFrames_ = 0;  // until the target is reached
    size_t rendered_ = 0;     // frames since the last reset
    size_t quietFrames_ = 0;  // in a row without a voice or reverb
};

}  // namespace hullrider
