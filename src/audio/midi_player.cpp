#include "audio/midi_player.h"

#include <algorithm>
#include <utility>

#include "audio/midi_chase.h"
#include "audio/ring.h"
#include "audio/synth_pool.h"

namespace hullrider {

namespace {

constexpr size_t kMostNotesAtOnce = 256;  // per block; FluidSynth sounds no more
constexpr int64_t kBlockFrames = 64;      // FluidSynth's own; events take effect at block boundaries

// Selecting a program takes as long as reading its samples. No music does it more often; a file that does keeps its
// current programs.
constexpr double kMostProgramsAtOnce = 128.0, kMostProgramsASecond = 400.0;

}  // namespace

MidiPlayer::~MidiPlayer() {
    GiveBackSynth(std::move(synth_));
}

bool MidiPlayer::UseFonts(const FontList& fonts) {
    if (synth_) return synth_->UseFonts(fonts);
    synth_ = TakeSynth(rate_, fonts);
    return synth_ != nullptr;
}

void MidiPlayer::GoTo(int64_t frame, Notes notes) {
    const double seconds = static_cast<double>(frame) / rate_;
    const auto earlier = [](const MidiEvent& event, double limit) { return event.seconds < limit; };
    const auto first = std::lower_bound(song_.events.begin(), song_.events.end(), seconds, earlier);
    next_ = static_cast<size_t>(first - song_.events.begin());
    position_ = origin_ = programsCountedAt_ = frame;
    programs_.fill(std::nullopt);
    programsLeft_ = kMostProgramsAtOnce;
    if (!synth_) return;
    synth_->Reset();
    ChaseMidi(song_, next_, *synth_);
    synth_->DropUnusedSamples();
    if (notes == Notes::kHeld) StrikeHeldNotes(song_, next_, *synth_);
}

// Events are sent at the start of one of FluidSynth's blocks, so that the sound does not depend on the size of the
// pieces.
void MidiPlayer::RenderTo(int64_t frame, float* out) {
    if (!synth_) {
        std::fill_n(out, static_cast<size_t>(std::max<int64_t>(frame - position_, 0)) * kStereo, 0.0f);
        position_ = frame;
        return;
    }
    while (position_ < frame) {
        const int64_t inBlock = (position_ - origin_) % kBlockFrames;
        if (inBlock == 0) SendEventsBefore(position_ + kBlockFrames);
        // On to the block of the next event, or as far as wanted.
        int64_t stop = frame;
        if (next_ < song_.events.size()) {
            const int64_t blocks = (FrameOf(song_.events[next_]) - position_ + inBlock) / kBlockFrames;
            stop = std::min(stop, position_ - inBlock + std::max<int64_t>(1, blocks) * kBlockFrames);
        }
        const auto count = static_cast<size_t>(stop - position_);
        synth_->Render(out, count);
        out += count * kStereo;
        position_ = stop;
    }
}

void MidiPlayer::SendEventsBefore(int64_t frame) {
    const double passed = static_cast<double>(frame - programsCountedAt_) / rate_;
    programsLeft_ = std::min(kMostProgramsAtOnce, programsLeft_ + passed * kMostProgramsASecond);
    programsCountedAt_ = frame;
    size_t struck = 0;
    for (; next_ < song_.events.size() && FrameOf(song_.events[next_]) < frame; next_++) {
        const MidiEvent& event = song_.events[next_];
        const uint8_t kind = event.status & 0xF0, channel = event.status & 0x0F;
        const bool strikes = kind == 0x90 && event.data[1] > 0;
        const bool choosesBank = kind == 0xB0 && (event.data[0] == 0 || event.data[0] == 32);
        if (strikes && ++struck > kMostNotesAtOnce) continue;
        if (kind == 0xC0) {
            programs_[channel] = event.data[0];
            continue;
        }
        if (strikes || choosesBank) ChooseProgram(channel);
        if (event.status == 0xF0) {
            for (uint8_t each = 0; each < programs_.size(); each++) ChooseProgram(each);
            synth_->SendSysex(song_.sysex[event.sysex].data(), song_.sysex[event.sysex].size());
        } else {
            synth_->Send(event.status, event.data[0], event.data[1]);
        }
    }
}

void MidiPlayer::ChooseProgram(uint8_t channel) {
    std::optional<uint8_t>& program = programs_[channel];
    if (!program || programsLeft_ < 1.0) return;
    synth_->Send(static_cast<uint8_t>(0xC0 | channel), *program, 0);
    program.reset();
    programsLeft_ -= 1.0;
}

}  // namespace hullrider
