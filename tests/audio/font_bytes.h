// Builds small SoundFonts for tests, as the SoundFont 2.04 format lays them out: one looped sine for every program and
// for the drums.
#pragma once

#include <cmath>
#include <numbers>
#include <vector>

#include "tests/bytes.h"

namespace hullrider {

struct FontShape {
    double amplitude = 0.3;  // of the sample, 1.0 being full scale
    int period = 100;        // samples of a wave; at 100, key 69 sounds at 441 Hz
    std::vector<int> banks = {0, 128};
};

inline std::string FontBytes(const FontShape& shape) {
    const auto word = [](int value) { return LittleEndian(static_cast<uint64_t>(value), 2); };
    const auto chunk = [&](const std::string& name, const std::string& data) {
        return name + LittleEndian(data.size(), 4) + data;
    };
    const auto name = [](std::string text) {
        text.resize(20);
        return text;
    };
    const int length = shape.period * 20;
    std::string samples;
    for (int i = 0; i < length + 46; i++) {
        const double phase = 2.0 * std::numbers::pi * i / shape.period;
        samples += word(i < length ? static_cast<int>(std::lround(32767.0 * shape.amplitude * std::sin(phase))) : 0);
    }
    std::string presets, presetBags, presetGenerators;
    int bags = 0;
    const auto addPreset = [&](const char* title, int program, int bank) {
        presets += name(title) + word(program) + word(bank) + word(bags) + std::string(12, '\0');
        presetBags += word(bags) + word(0);
        bags++;
    };
    for (const int bank : shape.banks) {
        for (int program = 0; program < (bank == 128 ? 1 : 128); program++) {
            addPreset("tone", program, bank);
            presetGenerators += word(41) + word(0);  // instrument 0
        }
    }
    addPreset("EOP", 0, 0);
    const std::string instruments = name("tone") + word(0) + name("EOI") + word(1);
    const std::string instrumentBags = word(0) + word(0) + word(2) + word(0);
    const std::string generators = word(54) + word(1) + word(53) + word(0) + word(0) + word(0);  // looped, sample 0
    const std::string header = name("tone") + LittleEndian(0, 4) + LittleEndian(static_cast<uint64_t>(length), 4) +
                               LittleEndian(0, 4) + LittleEndian(static_cast<uint64_t>(length), 4) +
                               LittleEndian(44100, 4) + std::string{69, 0} + word(0) + word(1) + name("EOS") +
                               std::string(26, '\0');
    const std::string noModulator(10, '\0');
    const std::string info = chunk("ifil", word(2) + word(1)) + chunk("isng", std::string("EMU8000\0", 8)) +
                             chunk("INAM", std::string("test\0\0", 6));
    const std::string directory = chunk("phdr", presets) + chunk("pbag", presetBags) + chunk("pmod", noModulator) +
                                  chunk("pgen", presetGenerators + word(0) + word(0)) + chunk("inst", instruments) +
                                  chunk("ibag", instrumentBags) + chunk("imod", noModulator) +
                                  chunk("igen", generators) + chunk("shdr", header);
    return chunk("RIFF", "sfbk" + chunk("LIST", "INFO" + info) + chunk("LIST", "sdta" + chunk("smpl", samples)) +
                             chunk("LIST", "pdta" + directory));
}

}  // namespace hullrider
