#include <algorithm>
#include <array>
#include <stdexcept>

#include "demo_music/bytes.h"
#include "demo_music/tracker/module.h"

namespace hullrider::demo {
namespace {

constexpr size_t kSamples = 31, kOrders = 128, kChannels = 4;
constexpr double kRateOfC2 = 8287.14;  // a PAL Amiga's, at period 428
constexpr int kIndexOfC2 = 12;
constexpr std::array<int, 36> kPeriods{856, 808, 762, 720, 678, 640, 604, 570, 538, 508, 480, 453,   // C-1 to B-1
                                       428, 404, 381, 360, 339, 320, 302, 285, 269, 254, 240, 226,   // C-2
                                       214, 202, 190, 180, 170, 160, 151, 143, 135, 127, 120, 113};  // C-3
enum Command { kArpeggio = 0x0, kVibrato = 0x4, kSetVolume = 0xC, kSetSpeed = 0xF };

struct CommandWord {
    int command = 0, parameter = 0;
    bool empty() const { return command == 0 && parameter == 0; }
};

int PeriodOf(const Cell& cell, const Sample& sample) {
    const double above = 12 * std::log2(sample.rate / kRateOfC2) + cell.key - sample.key;
    const long index = std::lround(above) + kIndexOfC2;
    if (index < 0 || index >= static_cast<long>(kPeriods.size())) {
        throw std::out_of_range("a MOD cannot play key " + std::to_string(cell.key) + " with " + sample.name);
    }
    return kPeriods[static_cast<size_t>(index)];
}

int DefaultVolume(const Sample& sample) {
    return static_cast<int>(std::lround(sample.volume * 64));
}

// A cell has one command only: a volume gives way to an effect, and need not be said when it is near the sample's own.
CommandWord CommandOf(const Cell& cell, const std::vector<Sample>& samples) {
    if (cell.effect == Effect::kArpeggio) return {kArpeggio, cell.parameter};
    if (cell.effect == Effect::kVibrato) return {kVibrato, cell.parameter};
    if (cell.key == Cell::kRelease) return {kSetVolume, 0};
    if (cell.volume < 0) return {};
    const Sample& sample = samples[static_cast<size_t>(cell.sample) - 1];
    return std::abs(cell.volume - DefaultVolume(sample)) <= 1 ? CommandWord{} : CommandWord{kSetVolume, cell.volume};
}

// The row's commands, the row's own speed (or the song's tempo) among them: in a free cell, else over the last one.
std::array<CommandWord, kChannels> Commands(const Row& row, const Module& module, bool setsTempo) {
    std::array<CommandWord, kChannels> commands;
    for (size_t i = 0; i < kChannels; ++i) commands[i] = CommandOf(row.cells[i], module.samples);
    const auto put = [&](CommandWord word) {
        const auto taken = [](const CommandWord& command) { return !command.empty(); };
        auto place = std::find_if_not(commands.begin(), commands.end(), taken);
        *(place == commands.end() ? commands.end() - 1 : place) = word;
    };
    if (setsTempo) put({kSetSpeed, module.beatsPerMinute});
    if (row.ticks > 0) put({kSetSpeed, row.ticks});
    return commands;
}

void PutPattern(Bytes& file, const Module& module, const Pattern& pattern, bool first) {
    for (const Row& row : pattern) {
        const auto commands = Commands(row, module, first && &row == &pattern.front());
        for (size_t i = 0; i < kChannels; ++i) {
            const Cell& cell = row.cells[i];
            const int period = cell.key < 0 ? 0 : PeriodOf(cell, module.samples[static_cast<size_t>(cell.sample) - 1]);
            file.U8((cell.sample & 0xF0) | (period >> 8));
            file.U8(period & 0xFF);
            file.U8(((cell.sample & 0x0F) << 4) | commands[i].command);
            file.U8(commands[i].parameter);
        }
    }
}

void PutSampleHeader(Bytes& file, const Sample& sample) {
    file.Text(sample.name, 22);
    file.Big16(static_cast<int>((sample.wave.size() + 1) / 2));
    file.U8(0);  // fine tuning
    file.U8(DefaultVolume(sample));
    file.Big16(static_cast<int>(sample.loopStart / 2));
    file.Big16(std::max(1, static_cast<int>(sample.loopLength / 2)));
}

}  // namespace

std::string WriteMod(const Module& module) {
    if (module.pans.size() != kChannels) throw std::out_of_range("a MOD has four channels");
    Bytes file;
    file.Text(module.title, 20);
    for (size_t i = 0; i < kSamples; ++i) {
        PutSampleHeader(file, i < module.samples.size() ? module.samples[i] : Sample{"", {}, kRateOfC2, 60, 0, 0, 0});
    }
    file.U8(static_cast<int>(module.order.size()));
    file.U8(127);
    Bytes order;
    for (const int pattern : module.order) order.U8(pattern);
    file.Text(order.text(), kOrders);
    file.Text("M.K.");
    for (const Pattern& pattern : module.patterns) {
        PutPattern(file, module, pattern, &pattern == &module.patterns.front());
    }
    for (const Sample& sample : module.samples) {
        for (const double value : sample.wave) file.U8(static_cast<int>(std::lround(value * 127)));
        if (sample.wave.size() % 2 != 0) file.U8(0);
    }
    return file.text();
}

}  // namespace hullrider::demo
