// effects_bench [SECONDS]: what effects and the limiter cost the device's callback, as processor time for each second
// of sound. One stereo stream of noise is rendered for so many seconds; the cost of mixing it without anything comes
// first.
#include <time.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "audio/bass.h"
#include "audio/manual_output.h"
#include "tests/temporary_folder.h"

namespace {

using namespace hullrider;

constexpr uint32_t kRate = 48000;
constexpr size_t kBlock = 480;

// One second of 16-bit stereo noise.
std::string NoiseWav() {
    std::string file = "RIFF";
    const auto put = [&](uint32_t value, int bytes) {
        for (int i = 0; i < bytes; i++) file += static_cast<char>(value >> (8 * i) & 0xFF);
    };
    put(36 + kRate * 4, 4);
    file += "WAVEfmt ";
    put(16, 4), put(1, 2), put(2, 2), put(kRate, 4), put(kRate * 4, 4), put(4, 2), put(16, 2);
    file += "data";
    put(kRate * 4, 4);
    uint32_t random = 1;
    for (uint32_t i = 0; i < kRate * 2; i++) put((random = random * 1664525 + 1013904223) >> 17, 2);
    return file;
}

double ThreadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

struct Case {
    const char* name;
    int bands;
    float gainDb;
    bool limited;
    float volume;
};

void Measure(const Case& test, const std::string& path, int seconds) {
    InitManualOutput(kRate, test.limited);
    const HSTREAM stream = BASS_StreamCreateFile(false, path.c_str(), 0, 0, BASS_SAMPLE_FLOAT | BASS_SAMPLE_LOOP);
    BASS_ChannelSetAttribute(stream, BASS_ATTRIB_VOL, test.volume);
    for (int i = 0; i < test.bands; i++) {
        const BASS_BFX_PEAKEQ band = {0, 1.0f, 0.0f, 31.0f * static_cast<float>(1 << i % 10), test.gainDb, -1};
        BASS_FXSetParameters(BASS_ChannelSetFX(stream, BASS_FX_BFX_PEAKEQ, 0), &band);
    }
    BASS_ChannelPlay(stream, false);
    std::vector<float> out(kBlock * 2);
    const size_t blocks = static_cast<size_t>(seconds) * kRate / kBlock;
    const double begin = ThreadSeconds();
    for (size_t i = 0; i < blocks; i++) RenderManually(out.data(), kBlock, kBlock);
    std::printf("%-36s %8.1f us\n", test.name, (ThreadSeconds() - begin) / seconds * 1e6);
    BASS_Free();
}

}  // namespace

int main(int argc, char** argv) {
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 300;
    if (seconds < 1) return 2;
    const TemporaryFolder folder;
    const std::string path = folder.Write("noise.wav", NoiseWav());
    for (const Case& test : {Case{"nothing", 0, 0, false, 0.1f},
                             {"12 bands at 0 dB", 12, 0, false, 0.1f},
                             {"12 bands at 3 dB", 12, 3, false, 0.1f},
                             {"limiter, nothing loud", 0, 0, true, 0.1f},
                             {"limiter, always too loud", 0, 0, true, 3.0f}}) {
        Measure(test, path, seconds);
    }
}
