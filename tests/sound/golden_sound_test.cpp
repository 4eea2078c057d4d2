// Figures of a MIDI song and of a module as they sounded when a listener found them right. They are there to notice
// that a default has changed: without reverb or chorus, with a poorer interpolation or a narrower stereo image, at
// least one figure leaves its bounds. The bounds hold for every version of the libraries that is built with.
#include <array>
#include <cmath>
#include <numbers>

#include "audio/loudness.h"
#include "tests/audio/midi_bytes.h"
#include "tests/audio/module_bytes.h"
#include "tests/sound/sound.h"

namespace hullrider {

namespace {

constexpr size_t kBands = 8;  // octaves around 63 Hz to 8 kHz

// All dB: the loudness, the peak, what a short stroke leaves behind in the room against the whole, left minus right
// against left plus right, and the bands against the whole.
using Figures = std::array<double, 4 + kBands>;

// The RMS of what a band-pass of an octave's width (R. Bristow-Johnson's cookbook, constant peak gain) lets through.
double BandRms(const Samples& mono, uint32_t rate, double hz) {
    const double w = 2.0 * std::numbers::pi * hz / rate;
    const double alpha = std::sin(w) * std::sinh(std::numbers::ln2 / 2.0 * w / std::sin(w));
    double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0, sum = 0.0;
    for (const float sample : mono) {
        const double x = static_cast<double>(sample);
        const double y = (alpha * (x - x2) + 2.0 * std::cos(w) * y1 - (1.0 - alpha) * y2) / (1.0 + alpha);
        x2 = x1, x1 = x, y2 = y1, y1 = y;
        sum += y * y;
    }
    return std::sqrt(sum / static_cast<double>(mono.size()));
}

Figures FiguresOf(const Samples& stereo, uint32_t rate) {
    Samples sum, difference;
    for (size_t i = 0; i < stereo.size(); i += 2) {
        sum.push_back(stereo[i] + stereo[i + 1]);
        difference.push_back(stereo[i] - stereo[i + 1]);
    }
    Loudness loudness(rate);
    loudness.Add(stereo.data(), stereo.size() / 2);
    Figures figures{loudness.Lkfs().value_or(-200.0), Decibels(static_cast<double>(Peak(stereo))),
                    Decibels(Rms(Part(stereo, stereo.size() - rate * 27 / 10, rate * 6 / 10)) / Rms(stereo)),
                    Decibels(Rms(difference) / Rms(sum))};
    for (size_t band = 0; band < kBands; band++) {
        figures[4 + band] = Decibels(BandRms(sum, rate, 62.5 * std::exp2(band)) / Rms(sum));
    }
    return figures;
}

void ExpectFigures(const Figures& heard, const Figures& golden, const Figures& bounds) {
    for (size_t i = 0; i < heard.size(); i++) EXPECT_NEAR(heard[i], golden[i], bounds[i]) << "figure " << i;
}

}  // namespace

class GoldenSound : public SoundTest {};

TEST_F(GoldenSound, AMidiSong) {
    const HSOUNDFONT font = BASS_MIDI_FontInit(HULLRIDER_TEST_SOUNDFONT, 0);
    ASSERT_NE(font, 0u);
    ASSERT_TRUE(UseFont(0, font));
    // A piano, a vibraphone, a bass and drums, 500 ticks a second.
    std::string song = Tempo(0, 500'000) + At(0, {0xC1, 11}) + At(0, {0xC2, 33});
    song += At(0, {0xB0, 91, 127}) + At(0, {0xB1, 93, 127}) + At(0, {0xB1, 10, 20}) + At(0, {0xB9, 91, 127});
    for (int bar = 0; bar < 6; bar++) {
        for (const int key : {60, 64, 67}) song += At(0, {0x90, key + bar % 3, 90});
        song += At(0, {0x92, 36 + bar, 100}) + At(0, {0x99, 36, 100}) + At(125, {0x91, 76 + bar, 80});
        song += At(125, {0x99, 38, 90}) + At(100, {0x99, 42, 70}) + At(0, {0x92, 36 + bar, 0});
        for (const int key : {60, 64, 67}) song += At(0, {0x90, key + bar % 3, 0});
        song += At(50, {0x91, 76 + bar, 0});
    }
    song += At(1000, {0x99, 37, 127});
    const HSTREAM stream = Play(folder_.Write("song.mid", MidiFile(0, 250, {song + EndOfTrack()})));
    const Samples heard = Render(static_cast<size_t>(LengthSec(stream) * kRate));
    const Figures golden{-19.1, -6.7, -27.5, -4.1, -7.8, -6.2, -5.4, -4.8, -7.6, -13.6, -17.4, -20.2};
    // The peak also depends on where the chorus is in its course.
    const Figures bounds{0.5, 0.9, 1.0, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5};
    ExpectFigures(FiguresOf(heard, kRate), golden, bounds);
}

TEST_F(GoldenSound, AModule) {
    const HMUSIC music =
        BASS_MusicLoad(false, folder_.Write("song.mod", ModuleBytes(856, 1, false, 1)).c_str(), 0, 0, 0, 0);
    ASSERT_TRUE(BASS_ChannelPlay(music, false));
    const Figures golden{-15.29, -10.55, 0.01, -6.02, -8.56, -0.87, -6.90, -9.14, -11.99, -16.33, -23.36, -29.10};
    Figures bounds;
    bounds.fill(0.1);
    const Samples heard = Render(kRate * 7);
    ExpectFigures(FiguresOf(heard, kRate), golden, bounds);
}

}  // namespace hullrider
