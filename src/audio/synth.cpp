#include "audio/synth.h"

#include <fluidsynth.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <mutex>
#include <string>
#include <utility>

#include "audio/ring.h"
#include "platform/console.h"
#include "platform/memory.h"

namespace hullrider {

namespace {

constexpr size_t kBlockFrames = 64;  // FluidSynth's own
constexpr int kNoBank = 1'000'000;   // the offset that hides a font's presets

// With no note sounding, a level below this for this long is the end of the reverb: -100 dBFS.
constexpr float kSilence = 1e-5f;
constexpr size_t kQuietMs = 500;

// Blocks until FluidSynth has applied its settings, and until its reverb's filters are empty. The shortest path through
// the reverb is longer.
constexpr size_t kTakenInBlocks = 3, kRoomFilterBlocks = 18;

// As loud as typical recorded music; FluidSynth's default is 14 dB softer.
constexpr double kGain = 1.0;

// The reverb, whose defaults differ between versions of FluidSynth.
constexpr std::pair<const char*, double> kRoom[] = {
    {"synth.reverb.room-size", 0.2}, {"synth.reverb.damp", 0.0},  {"synth.reverb.width", 0.5},
    {"synth.reverb.level", 0.9},     {"synth.chorus.level", 2.0}, {"synth.chorus.speed", 0.3},
    {"synth.chorus.depth", 8.0},
};

bool IsSilent(const float* frames, size_t count) {
    return std::all_of(frames, frames + count * kStereo, [](float sample) { return std::fabs(sample) < kSilence; });
}

void PrintSynthError(int, const char* message, void*) {
    PrintErrorLine(std::string("MIDI synthesizer: ") + message);
}

// Guards everything that may load or free samples, which all synthesizers share, even changes of programs.
std::mutex& SampleMutex() {
    static auto* const mutex = new std::mutex;  // outlives every synthesizer
    return *mutex;
}

void QuietLog() {
    static std::once_flag once;
    std::call_once(once, [] {
        fluid_set_log_function(FLUID_PANIC, PrintSynthError, nullptr);
        // Even errors: they are about files, and the opener of the file gets a result.
        for (const int level : {FLUID_ERR, FLUID_WARN, FLUID_INFO, FLUID_DBG}) {
            fluid_set_log_function(level, nullptr, nullptr);
        }
    });
}

}  // namespace

void SynthDeleter::operator()(_fluid_hashtable_t* settings) const {
    delete_fluid_settings(settings);
}
void SynthDeleter::operator()(_fluid_synth_t* synth) const {
    const std::lock_guard lock(SampleMutex());
    delete_fluid_synth(synth);
}

Synth::Synth(uint32_t rate) : rate_(rate) {
    QuietLog();
    settings_.reset(new_fluid_settings());
    if (!settings_) return;
    fluid_settings_setnum(settings_.get(), "synth.sample-rate", rate);
    fluid_settings_setnum(settings_.get(), "synth.gain", kGain);
    fluid_settings_setint(settings_.get(), "synth.reverb.active", 1);
    fluid_settings_setint(settings_.get(), "synth.chorus.active", 1);
    for (const auto& [name, value] : kRoom) fluid_settings_setnum(settings_.get(), name, value);
    fluid_settings_setint(settings_.get(), "synth.threadsafe-api", 0);
    fluid_settings_setint(settings_.get(), "synth.lock-memory", 0);
    // A song uses only a few of a font's presets; only their samples are read.
    fluid_settings_setint(settings_.get(), "synth.dynamic-sample-loading", 1);
    synth_.reset(new_fluid_synth(settings_.get()));
}

Synth::~Synth() {
    synth_.reset();
    ReturnFreeMemory();
}

int Synth::Load(const std::string& path) {
    const std::lock_guard lock(SampleMutex());
    return fluid_synth_sfload(synth_.get(), path.c_str(), 0);
}

bool Synth::UseFonts(const FontList& fonts) {
    std::vector<int> loaded;
    // FluidSynth asks the last loaded font first, while the list starts with the first choice.
    for (auto entry = fonts.rbegin(); entry != fonts.rend(); ++entry) {
        const int number = Load(entry->font->path);
        if (number < 0) continue;
        fluid_synth_set_bank_offset(synth_.get(), number, entry->bank);
        loaded.push_back(number);
    }
    if (loaded.empty() && !fonts.empty()) {
        PrintErrorLine("cannot load the SoundFont " + fonts.front().font->path);
        return false;
    }
    for (const int number : loaded_) {
        fluid_synth_set_bank_offset(synth_.get(), number, kNoBank);
        retired_.push_back(number);
    }
    loaded_ = std::move(loaded);
    fonts_ = fonts;
    const std::lock_guard lock(SampleMutex());
    fluid_synth_program_reset(synth_.get());
    UnloadRetired();
    return true;
}

// FluidSynth would unload a sounding font by a timer, on a thread of its own. So it waits for the end of all notes. The
// caller holds the mutex.
void Synth::UnloadRetired() {
    if (retired_.empty() || fluid_synth_get_active_voice_count(synth_.get()) > 0) return;
    // The last argument keeps a preset for channels that had no program change.
    for (const int number : retired_) fluid_synth_sfunload(synth_.get(), number, 1);
    retired_.clear();
}

void Synth::SetDraft(bool draft) {
    fluid_synth_set_interp_method(synth_.get(), -1, draft ? FLUID_INTERP_LINEAR : FLUID_INTERP_4THORDER);
}

void Synth::Reset() {
    const std::lock_guard lock(SampleMutex());
    KeepSamples();
    // FluidSynth's reset lets notes sound on, and they would refill the emptied reverb.
    fluid_synth_all_sounds_off(synth_.get(), -1);
    DropBlocks(kTakenInBlocks);
    // A reset leaves the content of the reverb's filters, which they feed back into it. A second reset finds them
    // empty.
    for (int resets = 0; resets < 2; resets++) {
        fluid_synth_system_reset(synth_.get());
        DropBlocks(kRoomFilterBlocks);
    }
    UnloadRetired();
}

// The last block must be complete, because FluidSynth would begin with its remainder.
void Synth::DropBlocks(size_t count) {
    std::array<float, kRoomFilterBlocks * kBlockFrames * kStereo> dropped;
    const size_t frames = count * kBlockFrames - rendered_ % kBlockFrames;
    fluid_synth_write_float(synth_.get(), static_cast<int>(frames), dropped.data(), 0, 2, dropped.data(), 1, 2);
    rendered_ = 0;
}

void Synth::KeepSamples() {
    for (int channel = 0; channel < fluid_synth_count_midi_channels(synth_.get()); channel++) {
        int font = 0, bank = 0, number = 0;
        if (fluid_synth_get_program(synth_.get(), channel, &font, &bank, &number) != FLUID_OK) continue;
        // A preset chosen by a program change does not name its font: it is the first one in order that has it.
        for (auto one = loaded_.rbegin(); one != loaded_.rend(); ++one) {
            if (fluid_synth_pin_preset(synth_.get(), *one, bank, number) != FLUID_OK) continue;
            kept_.push_back({*one, bank, number});
            break;
        }
    }
}

void Synth::Rest() {
    Reset();
    SetGain(1.0f);
    SetDraft(false);
    const std::lock_guard lock(SampleMutex());
    for (int channel = 0; channel < fluid_synth_count_midi_channels(synth_.get()); channel++) {
        fluid_synth_unset_program(synth_.get(), channel);
    }
    UnpinKept();
    ReturnFreeMemory();
}

void Synth::DropUnusedSamples() {
    const std::lock_guard lock(SampleMutex());
    UnpinKept();
}

void Synth::UnpinKept() {
    for (const Program& program : kept_) {
        fluid_synth_unpin_preset(synth_.get(), program.font, program.bank, program.number);
    }
    kept_.clear();
}

void Synth::Send(uint8_t status, uint8_t data1, uint8_t data2) {
    fluid_synth_t* synth = synth_.get();
    const int channel = status & 0x0F;
    switch (status & 0xF0) {
        case 0x80:
            fluid_synth_noteoff(synth, channel, data1);
            break;
        case 0x90:
            fluid_synth_noteon(synth, channel, data1, data2);
            break;
        case 0xA0:
            fluid_synth_key_pressure(synth, channel, data1, data2);
            break;
        case 0xB0:
            fluid_synth_cc(synth, channel, data1, data2);
            break;
        case 0xC0:
            ChangeProgram(channel, data1);
            break;
        case 0xD0:
            fluid_synth_channel_pressure(synth, channel, data1);
            break;
        case 0xE0:
            fluid_synth_pitch_bend(synth, channel, data2 << 7 | data1);
            break;
        default:
            break;
    }
}

void Synth::ChangeProgram(int channel, int program) {
    const std::lock_guard lock(SampleMutex());
    fluid_synth_program_change(synth_.get(), channel, program);
}

void Synth::SendSysex(const uint8_t* bytes, size_t count) {
    const std::lock_guard lock(SampleMutex());  // the message may be a reset
    fluid_synth_sysex(synth_.get(), reinterpret_cast<const char*>(bytes), static_cast<int>(count), nullptr, nullptr,
                      nullptr, 0);
}

void Synth::Render(float* out, size_t frames) {
    // Effects cost as much in silence as in music.
    const bool still = fluid_synth_get_active_voice_count(synth_.get()) == 0;
    if (!still) quietFrames_ = 0;
    if (quietFrames_ * 1000 >= kQuietMs * rate_) {
        std::fill_n(out, frames * kStereo, 0.0f);
    } else {
        fluid_synth_write_float(synth_.get(), static_cast<int>(frames), out, 0, 2, out, 1, 2);
        rendered_ += frames;
        if (still) NoteQuiet(out, frames);
        ApplyGain(out, frames);
    }
    if (retired_.empty()) return;
    const std::lock_guard lock(SampleMutex());
    UnloadRetired();
}

void Synth::SetGain(float gain) {
    GlideToGain(gain, 0);
}

void Synth::GlideToGain(float gain, size_t frames) {
    targetGain_ = gain;
    glideFrames_ = frames;
    if (frames == 0) gain_ = gain;
}

void Synth::ApplyGain(float* out, size_t frames) {
    size_t i = 0;
    for (; glideFrames_ > 0 && i < frames; i++, glideFrames_--) {
        gain_ += (targetGain_ - gain_) / static_cast<float>(glideFrames_);
        out[i * kStereo] *= gain_;
        out[i * kStereo + 1] *= gain_;
    }
    for (i *= kStereo; i < frames * kStereo; i++) out[i] *= gain_;
}

void Synth::NoteQuiet(const float* out, size_t frames) {
    quietFrames_ = IsSilent(out, frames) ? quietFrames_ + frames : 0;
}

}  // namespace hullrider
