// sound_bench DEMO-MUSIC [--font FILE] [--crossfade MINUTES]: how soon a song is heard, what a SoundFont costs to open,
// and what playing costs, each figure beside its limit. With --crossfade instead: whether a song lacks sound while one
// is faded into the other every 5 seconds beside a busy machine. DEMO-MUSIC is the folder of the demo music. Needs
// ffmpeg.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "audio/bass.h"
#include "audio/engine.h"
#include "audio/manual_output.h"
#include "bench/bench_songs.h"
#include "bench/process_load.h"
#include "tests/temporary_folder.h"

namespace {

using namespace hullrider;
using Clock = std::chrono::steady_clock;

constexpr uint32_t kRate = 48000;

std::minstd_rand draw(1);

double MsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

uint32_t Open(const BenchSong& song, uint32_t flags = 0) {
    const uint32_t channel = song.isModule ? BASS_MusicLoad(false, song.path.c_str(), 0, 0, flags, 0)
                                           : BASS_StreamCreateFile(false, song.path.c_str(), 0, 0, flags);
    if (channel == 0) std::fprintf(stderr, "%s: error %d\n", song.path.c_str(), BASS_ErrorGetCode());
    return channel;
}

void SeekAnywhere(uint32_t channel) {
    const uint64_t length = BASS_ChannelGetLength(channel, BASS_POS_BYTE);
    const double place = std::uniform_real_distribution<>(0.0, 0.9)(draw);
    BASS_ChannelSetPosition(channel, static_cast<uint64_t>(place * static_cast<double>(length)), BASS_POS_BYTE);
}

uint32_t PlayAnywhere(const BenchSong& song, uint32_t flags = 0) {
    const uint32_t channel = Open(song, flags);
    SeekAnywhere(channel);
    BASS_ChannelPlay(channel, false);
    return channel;
}

HSOUNDFONT UseFont(const char* file) {
    const HSOUNDFONT font = BASS_MIDI_FontInit(file, 0);
    const BASS_MIDI_FONT entry{font, -1, 0};
    if (!BASS_MIDI_StreamSetFonts(0, &entry, 1)) std::fprintf(stderr, "%s is not used\n", file);
    return font;
}

double At(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    return values[static_cast<size_t>(part * static_cast<double>(values.size() - 1))];
}

void PrintTimes(const char* name, const std::vector<double>& ms) {
    std::printf("  %-10s %4zu songs   p50 %6.1f ms   p95 %6.1f ms   longest %6.1f ms\n", name, ms.size(), At(ms, 0.5),
                At(ms, 0.95), At(ms, 1.0));
}

// From the first call to the first block that has the song in it.
void MeasureStarts(const std::vector<BenchSong>& songs, const char* font) {
    constexpr size_t kBlock = 240;
    InitManualOutput(kRate);
    UseFont(font);
    std::vector<float> block(kBlock * kStereo);
    std::map<std::string, std::vector<double>> byKind;
    std::vector<double> all;
    std::vector<BenchSong> order = songs;
    std::shuffle(order.begin(), order.end(), draw);
    for (const BenchSong& song : order) {
        const auto begin = Clock::now();
        const uint32_t channel = PlayAnywhere(song);
        RenderManually(block.data(), kBlock, kBlock);  // waits for the decoder
        all.push_back(MsSince(begin));
        byKind[song.kind].push_back(all.back());
        BASS_StreamFree(channel);
    }
    BASS_Free();
    std::printf("start at a random place, to its first block (p95 at most 50 ms)\n");
    for (const auto& [kind, ms] : byKind) PrintTimes(kind.c_str(), ms);
    PrintTimes("all", all);
}

void MeasureFont(const char* file) {
    InitManualOutput(kRate);
    std::vector<double> ms;
    for (int i = 0; i < 6; i++) {
        const auto begin = Clock::now();
        const HSOUNDFONT font = BASS_MIDI_FontInit(file, 0);
        if (i > 0) ms.push_back(MsSince(begin));  // the first one brings the file into memory
        BASS_MIDI_FontFree(font);
    }
    BASS_Free();
    std::printf("open the font %s: %.1f ms (at most 150)\n", file, At(ms, 0.5));
}

void PrintLoad(const char* name, const char* limit, const std::function<void()>& meanwhile = {}) {
    constexpr double kSettleSec = 2.5, kSec = 10.0;
    std::this_thread::sleep_for(std::chrono::duration<double>(kSettleSec));
    const ProcessLoad load = MeasureLoad(kSec, meanwhile);
    std::printf("  %-22s %7.2f ms/s   %6.1f wake-ups/s   %s\n", name, load.cpuMsPerSec, load.wakeUpsPerSec, limit);
}

void MeasureLoads(const std::vector<BenchSong>& songs) {
    const auto flac =
        std::find_if(songs.rbegin(), songs.rend(), [](const BenchSong& song) { return song.kind == "flac"; });
    std::printf("playing into the null output\n");
    BASS_Init(0, kRate, 0, nullptr, nullptr);
    PrintLoad("nothing", "(at most 0.2 ms/s)");
    const uint32_t first = Open(*flac, BASS_SAMPLE_LOOP), second = Open(*flac, BASS_SAMPLE_LOOP);
    BASS_ChannelPlay(first, false);
    std::this_thread::sleep_for(std::chrono::seconds(1));
    BASS_ChannelPause(first);
    PrintLoad("a paused song", "(at most 0.2 ms/s)");
    BASS_ChannelStop(first);
    PrintLoad("a stopped song", "(at most 0.2 ms/s)");
    BASS_ChannelPlay(first, false);
    PrintLoad("a flac", "(at most 40 wake-ups/s)");
    BASS_ChannelPlay(second, false);
    PrintLoad("two that cross-fade", "", [&] {
        BASS_ChannelSlideAttribute(first, BASS_ATTRIB_VOL, 0.0f, 10000);
        BASS_ChannelSlideAttribute(second, BASS_ATTRIB_VOL, 1.0f, 10000);
    });
    BASS_Free();
}

// Processors that others use as much as they can.
class BusyMachine {
public:
    BusyMachine() {
        constexpr int kLoops = 4;
        for (int i = 0; i < kLoops; i++) {
            loops_.emplace_back([this] {
                while (!over_.load(std::memory_order_relaxed)) {
                }
            });
        }
    }
    ~BusyMachine() {
        over_ = true;
        for (std::thread& loop : loops_) loop.join();
    }

private:
    std::atomic<bool> over_{false};
    std::vector<std::thread> loops_;
};

void CrossFade(const std::vector<BenchSong>& songs, const char* font, double minutes) {
    constexpr std::chrono::seconds kPlay(5);
    constexpr uint32_t kFadeMs = 2000;
    BASS_Init(0, kRate, 0, nullptr, nullptr);
    UseFont(font);
    const BusyMachine busy;
    const auto end = Clock::now() + std::chrono::duration<double>(minutes * 60.0);
    uint32_t current = 0;
    int fades = 0;
    for (; Clock::now() < end; fades++) {
        const uint32_t next = PlayAnywhere(songs[draw() % songs.size()], BASS_SAMPLE_LOOP);
        BASS_ChannelSetAttribute(next, BASS_ATTRIB_VOL, 0.0f);
        BASS_ChannelSlideAttribute(next, BASS_ATTRIB_VOL, 1.0f, kFadeMs);
        BASS_ChannelSlideAttribute(current, BASS_ATTRIB_VOL, 0.0f, kFadeMs);
        std::this_thread::sleep_for(std::chrono::milliseconds(kFadeMs));
        BASS_StreamFree(current);
        std::this_thread::sleep_for(kPlay - std::chrono::milliseconds(kFadeMs));
        current = next;
    }
    const auto lacked = static_cast<unsigned long long>(CurrentEngine()->TheMixer().FramesLacked());
    std::printf("%d cross-fades beside four busy loops: %llu frames lacking (none wanted)\n", fades, lacked);
    BASS_Free();
}

}  // namespace

int main(int argc, char* argv[]) {
    const char* font = "/usr/share/sounds/sf2/TimGM6mb.sf2";
    double minutes = 0.0;
    if (argc < 2) {
        std::fprintf(stderr, "sound_bench DEMO-MUSIC [--font FILE] [--crossfade MINUTES]\n");
        return 2;
    }
    for (int i = 2; i + 1 < argc; i += 2) {
        if (std::strcmp(argv[i], "--font") == 0) font = argv[i + 1];
        if (std::strcmp(argv[i], "--crossfade") == 0) minutes = std::atof(argv[i + 1]);
    }
    const TemporaryFolder folder;
    const std::vector<BenchSong> songs = MakeBenchSongs(folder.Path(), argv[1], 210);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    if (minutes > 0.0) {
        CrossFade(songs, font, minutes);
        return 0;
    }
    MeasureStarts(songs, font);
    MeasureFont(font);
    MeasureLoads(songs);
    return 0;
}
