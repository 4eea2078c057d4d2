// What SoundFonts and MIDI cost and how loud they are:
//
//     midi_bench SONG.mid FONT.sf2...
//
// For each font: the time of BASS_MIDI_FontInit, the processor time of a second of sound, the loudness of the song, and
// the resident memory with one stream, with a second one through the same file, and when all are freed.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <span>
#include <string>
#include <vector>

#include "audio/bass.h"
#include "audio/loudness.h"
#include "audio/manual_output.h"

namespace {

constexpr uint32_t kRate = 44100;

double ResidentMb() {
    std::ifstream in("/proc/self/statm");
    double whole = 0.0, resident = 0.0;
    in >> whole >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

double ProcessorMs() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double WallMs() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
}

// Renders `seconds` and returns their loudness, LKFS.
double Render(double seconds) {
    std::vector<float> block(kRate / 10 * 2);
    hullrider::Loudness loudness(kRate);
    for (double done = 0.0; done < seconds; done += 0.1) {
        hullrider::RenderManually(block.data(), block.size() / 2, 441);
        loudness.Add(block.data(), block.size() / 2);
    }
    return loudness.Lkfs().value_or(-200.0);
}

HSTREAM Play(const char* song, HSOUNDFONT font) {
    const HSTREAM stream = BASS_StreamCreateFile(false, song, 0, 0, BASS_SAMPLE_FLOAT);
    const BASS_MIDI_FONT entry{font, -1, 0};
    BASS_MIDI_StreamSetFonts(stream, &entry, 1);
    BASS_ChannelPlay(stream, false);
    return stream;
}

bool Measure(const char* song, const char* file) {
    constexpr double kSeconds = 60.0;
    hullrider::InitManualOutput(kRate);
    const double before = ResidentMb();
    const double began = WallMs();
    const HSOUNDFONT first = BASS_MIDI_FontInit(file, 0);
    const double initMs = WallMs() - began;
    if (first == 0) {
        std::printf("%s: error %d\n", file, BASS_ErrorGetCode());
        return false;
    }
    const HSTREAM one = Play(song, first);
    Render(1.0);  // samples are loaded
    const double used = ProcessorMs();
    const double level = Render(kSeconds);
    const double perSecond = (ProcessorMs() - used) / kSeconds;
    const double withOne = ResidentMb();
    const HSOUNDFONT second = BASS_MIDI_FontInit(file, 0);
    const HSTREAM two = Play(song, second);
    Render(kSeconds);
    const double withTwo = ResidentMb();
    for (const HSTREAM stream : {one, two}) BASS_StreamFree(stream);
    for (const HSOUNDFONT font : {first, second}) BASS_MIDI_FontFree(font);
    Render(0.1);
    BASS_Free();
    std::printf("%-40s init %6.1f ms  %6.2f ms/s  %6.1f LKFS  memory: before %.1f, one %.1f, two %.1f, freed %.1f MB\n",
                file, initMs, perSecond, level, before, withOne, withTwo, ResidentMb());
    return true;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3) return 2;
    bool good = true;
    for (const char* font : std::span(arguments + 2, arguments + count)) good = Measure(arguments[1], font) && good;
    return good ? 0 : 1;
}
