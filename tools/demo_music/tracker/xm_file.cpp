#include <algorithm>
#include <stdexcept>

#include "demo_music/bytes.h"
#include "demo_music/tracker/module.h"

namespace hullrider::demo {
namespace {

constexpr uint32_t kHeaderSize = 276, kPatternHeaderSize = 9, kInstrumentSize = 263, kSampleHeaderSize = 40;
constexpr double kRateOfMiddleC = 8363;
constexpr int kKeyOff = 97, kSpeed = 6, kEnvelopePoints = 12;
constexpr int kLoopForward = 1, k16Bit = 0x10, kEnvelopeOn = 1, kEnvelopeSustains = 2;
enum Bits { kPacked = 0x80, kHasNote = 1, kHasSample = 2, kHasVolume = 4, kHasEffect = 8, kHasParameter = 16 };

int NoteOf(const Cell& cell) {
    if (cell.key == Cell::kRelease) return kKeyOff;
    const int note = cell.key - 11;  // middle C is 49
    if (note < 1 || note > 96) throw std::out_of_range("an XM cannot play key " + std::to_string(cell.key));
    return note;
}

int EffectOf(const Cell& cell) {
    return cell.effect == Effect::kVibrato ? 4 : 0;
}

void PutCell(Bytes& data, const Cell& cell, int ticks) {
    const bool setsSpeed = ticks > 0 && cell.effect == Effect::kNone;
    const bool hasEffect = setsSpeed || cell.effect != Effect::kNone;
    data.U8(kPacked | (cell.key != Cell::kNoNote ? kHasNote : 0) | (cell.sample > 0 ? kHasSample : 0) |
            (cell.volume >= 0 ? kHasVolume : 0) | (hasEffect ? kHasEffect | kHasParameter : 0));
    if (cell.key != Cell::kNoNote) data.U8(NoteOf(cell));
    if (cell.sample > 0) data.U8(cell.sample);
    if (cell.volume >= 0) data.U8(0x10 + cell.volume);
    if (hasEffect) data.U8(setsSpeed ? 0xF : EffectOf(cell)), data.U8(setsSpeed ? ticks : cell.parameter);
}

void PutPattern(Bytes& file, const Pattern& pattern) {
    Bytes data;
    for (const Row& row : pattern) {
        for (const Cell& cell : row.cells) PutCell(data, cell, row.ticks);
    }
    file.Little32(kPatternHeaderSize);
    file.U8(0);
    file.Little16(static_cast<int>(pattern.size()));
    file.Little16(static_cast<int>(data.size()));
    file.Text(data.text());
}

// Envelopes count ticks, of which there are beatsPerMinute * 2 / 5 a second.
int TicksOf(double seconds, const Module& module) {
    return static_cast<int>(std::lround(seconds * module.beatsPerMinute * 0.4));
}

// Up to full, stay there until the key is let go, down to nothing.
void PutEnvelope(Bytes& file, const Sample& sample, const Module& module) {
    const int attack = TicksOf(sample.attackSeconds, module), release = TicksOf(sample.releaseSeconds, module);
    const std::array<std::pair<int, int>, 3> points{
        {{0, attack > 0 ? 0 : 64}, {std::max(1, attack), 64}, {std::max(1, attack) + std::max(1, release), 0}}};
    for (const auto& [tick, level] : points) file.Little16(tick), file.Little16(level);
    file.Zeros((kEnvelopePoints - points.size()) * 4);
}

void PutInstrument(Bytes& file, const Sample& sample, const Module& module) {
    const bool shaped = sample.loopLength > 0;
    file.Little32(kInstrumentSize);
    file.Text(sample.name, 22);
    file.U8(0);
    file.Little16(1);  // one sample
    file.Little32(kSampleHeaderSize);
    file.Zeros(96);  // which every key plays
    PutEnvelope(file, sample, module);
    file.Zeros(kEnvelopePoints * 4);  // no pan envelope
    file.U8(3), file.U8(0);
    file.U8(1), file.U8(0), file.U8(0);  // sustained at the second point
    file.Zeros(3);
    file.U8(shaped ? kEnvelopeOn | kEnvelopeSustains : 0);
    file.U8(0);
    file.Zeros(4);  // no vibrato of its own
    file.Little16(0);
    file.Zeros(22);
}

void PutSample(Bytes& file, const Sample& sample) {
    const double semitones = 12 * std::log2(sample.rate / kRateOfMiddleC) + 60 - sample.key;
    const long relative = std::lround(semitones);
    file.Little32(static_cast<uint32_t>(sample.wave.size() * 2));
    file.Little32(static_cast<uint32_t>(sample.loopStart * 2));
    file.Little32(static_cast<uint32_t>(sample.loopLength * 2));
    file.U8(static_cast<int>(std::lround(sample.volume * 64)));
    file.U8(static_cast<int>(std::lround((semitones - static_cast<double>(relative)) * 128)));
    file.U8(k16Bit | (sample.loopLength > 0 ? kLoopForward : 0));
    file.U8(std::clamp(static_cast<int>(std::lround(128 + 127 * sample.pan)), 0, 255));
    file.U8(static_cast<int>(relative));
    file.U8(0);
    file.Text(sample.name, 22);
    int last = 0;
    for (const double value : sample.wave) {
        const int now = static_cast<int>(std::lround(value * 32767));
        file.Little16(now - last);
        last = now;
    }
}

}  // namespace

std::string WriteXm(const Module& module) {
    Bytes file;
    file.Text("Extended Module: ");
    file.Text(module.title, 20);
    file.U8(0x1A);
    file.Text("Demo music", 20);
    file.Little16(0x0104);
    file.Little32(kHeaderSize);
    file.Little16(static_cast<int>(module.order.size()));
    file.Little16(0);
    file.Little16(static_cast<int>(module.pans.size()));
    file.Little16(static_cast<int>(module.patterns.size()));
    file.Little16(static_cast<int>(module.samples.size()));
    file.Little16(1);  // linear frequencies
    file.Little16(kSpeed);
    file.Little16(module.beatsPerMinute);
    Bytes order;
    for (const int pattern : module.order) order.U8(pattern);
    file.Text(order.text(), 256);
    for (const Pattern& pattern : module.patterns) PutPattern(file, pattern);
    for (const Sample& sample : module.samples) {
        PutInstrument(file, sample, module);
        PutSample(file, sample);
    }
    return file.text();
}

}  // namespace hullrider::demo
