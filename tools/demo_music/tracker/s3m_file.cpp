#include <algorithm>
#include <stdexcept>

#include "demo_music/bytes.h"
#include "demo_music/tracker/module.h"

namespace hullrider::demo {
namespace {

constexpr size_t kParagraph = 16;  // pointers count these
constexpr size_t kChannels = 32;
constexpr int kSamplePlain = 1, kFlagLoop = 1, kFlag16Bit = 4;
constexpr int kNoteCut = 254, kNoNote = 255;
constexpr int kSpeed = 6;
enum Bits { kHasNote = 32, kHasVolume = 64, kHasCommand = 128 };

constexpr int Command(char letter) {
    return letter - 'A' + 1;
}

int NoteOf(const Cell& cell) {
    if (cell.key == Cell::kRelease) return kNoteCut;
    if (cell.key == Cell::kNoNote) return kNoNote;
    const int semitones = cell.key - 12;  // middle C is in octave 4
    if (semitones < 0 || semitones >= 96) throw std::out_of_range("an S3M cannot play key " + std::to_string(cell.key));
    return semitones / 12 * 16 + semitones % 12;
}

struct CommandWord {
    int command = 0, parameter = 0;
};

CommandWord CommandOf(const Cell& cell) {
    switch (cell.effect) {
        case Effect::kArpeggio:
            return {Command('J'), cell.parameter};
        case Effect::kVibrato:
            return {Command('H'), cell.parameter};
        case Effect::kNone:
            break;
    }
    return {};
}

void PutRow(Bytes& pattern, const Row& row) {
    bool speedIsSet = row.ticks == 0;
    for (size_t channel = 0; channel < row.cells.size(); ++channel) {
        const Cell& cell = row.cells[channel];
        CommandWord word = CommandOf(cell);
        if (!speedIsSet && word.command == 0) {
            word = {Command('A'), row.ticks};
            speedIsSet = true;
        }
        const int bits = (cell.key != Cell::kNoNote ? kHasNote : 0) | (cell.volume >= 0 ? kHasVolume : 0) |
                         (word.command != 0 ? kHasCommand : 0);
        if (bits == 0) continue;
        pattern.U8(bits | static_cast<int>(channel));
        if (bits & kHasNote) pattern.U8(NoteOf(cell)), pattern.U8(cell.sample);
        if (bits & kHasVolume) pattern.U8(cell.volume);
        if (bits & kHasCommand) pattern.U8(word.command), pattern.U8(word.parameter);
    }
    pattern.U8(0);
}

std::string PackedPattern(const Pattern& pattern) {
    Bytes rows;
    for (const Row& row : pattern) PutRow(rows, row);
    Bytes packed;
    packed.Little16(static_cast<int>(rows.size() + 2));
    packed.Text(rows.text());
    return packed.text();
}

std::string SampleData(const Sample& sample) {
    Bytes data;
    for (const double value : sample.wave) data.Little16(static_cast<int>(std::lround(value * 32767)) + 32768);
    return data.text();
}

std::string SampleHeader(const Sample& sample, size_t dataAt) {
    const auto paragraph = static_cast<int>(dataAt / kParagraph);
    const double rateOfMiddleC = sample.rate * std::exp2((60 - sample.key) / 12.0);
    Bytes header;
    header.U8(kSamplePlain);
    header.Text("", 12);  // a DOS file name
    header.U8(paragraph >> 16);
    header.Little16(paragraph & 0xFFFF);
    header.Little32(static_cast<uint32_t>(sample.wave.size()));
    header.Little32(static_cast<uint32_t>(sample.loopStart));
    header.Little32(static_cast<uint32_t>(sample.loopStart + sample.loopLength));
    header.U8(static_cast<int>(std::lround(sample.volume * 64)));
    header.U8(0);
    header.U8(0);  // not packed
    header.U8(kFlag16Bit | (sample.loopLength > 0 ? kFlagLoop : 0));
    header.Little32(static_cast<uint32_t>(std::lround(rateOfMiddleC)));
    header.Zeros(12);
    header.Text(sample.name, 28);
    header.Text("SCRS");
    return header.text();
}

std::string Order(const Module& module) {
    Bytes order;
    for (const int pattern : module.order) order.U8(pattern);
    order.U8(255);
    if (order.size() % 2 != 0) order.U8(255);
    return order.text();
}

void PutHeader(Bytes& file, const Module& module, size_t orders) {
    file.Text(module.title, 28);
    file.U8(0x1A);
    file.U8(16);
    file.Zeros(2);
    file.Little16(static_cast<int>(orders));
    file.Little16(static_cast<int>(module.samples.size()));
    file.Little16(static_cast<int>(module.patterns.size()));
    file.Little16(0);       // flags
    file.Little16(0x1320);  // made by version 3.20
    file.Little16(2);       // unsigned samples
    file.Text("SCRM");
    file.U8(64);  // global volume
    file.U8(kSpeed);
    file.U8(module.beatsPerMinute);
    file.U8(0x80 | 46);  // stereo; master volume
    file.U8(0);
    file.U8(252);  // pans follow
    file.Zeros(10);
    // The first eight channels are the card's left ones, the next eight its right ones; the pans below overrule that.
    for (size_t i = 0; i < kChannels; ++i) file.U8(i < module.pans.size() ? static_cast<int>(i) : 255);
}

void PutPans(Bytes& file, const Module& module) {
    for (size_t i = 0; i < kChannels; ++i) {
        const double pan = i < module.pans.size() ? module.pans[i] : 0;
        file.U8(0x20 | static_cast<int>(std::lround(7.5 + 7.5 * pan)));
    }
}

}  // namespace

std::string WriteS3m(const Module& module) {
    // Everything after the header starts at a whole paragraph; the pointers to it come before it.
    const std::string order = Order(module);
    std::vector<std::string> parts;  // sample headers, patterns, samples
    for (const Sample& sample : module.samples) parts.push_back(SampleHeader(sample, 0));
    for (const Pattern& pattern : module.patterns) parts.push_back(PackedPattern(pattern));
    const size_t pointers = parts.size();
    for (const Sample& sample : module.samples) parts.push_back(SampleData(sample));

    Bytes file;
    PutHeader(file, module, order.size());
    file.Text(order);
    const auto toParagraph = [](size_t size) { return (size + kParagraph - 1) / kParagraph * kParagraph; };
    std::vector<size_t> places;
    size_t at = toParagraph(file.size() + 2 * pointers + kChannels);
    for (const std::string& part : parts) {
        places.push_back(at);
        at = toParagraph(at + part.size());
    }
    for (size_t i = 0; i < module.samples.size(); ++i) parts[i] = SampleHeader(module.samples[i], places[pointers + i]);
    for (size_t i = 0; i < pointers; ++i) file.Little16(static_cast<int>(places[i] / kParagraph));
    PutPans(file, module);
    for (const std::string& part : parts) {
        file.PadTo(kParagraph);
        file.Text(part);
    }
    return file.text();
}

}  // namespace hullrider::demo
