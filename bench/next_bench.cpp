// next_bench DEMO-MUSIC [--font FILE] [ROUNDS]: how long after Next the new song's first sample is taken, beyond the
// output's own block, for a song that was prepared and for one that has to be opened first. Plays the demo music and
// songs that ffmpeg makes into the null output. The figures go to the error stream, beside the player's own lines.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "audio/bass.h"
#include "audio/block_clock.h"
#include "bench/bench_songs.h"
#include "library/music_type.h"
#include "platform/post.h"
#include "playback/next_up.h"
#include "playback/play_next.h"
#include "playback/sound_fonts.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"
#include "tests/playback/made_library.h"
#include "tests/temporary_folder.h"

namespace {

using namespace hullrider;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr uint32_t kRate = 44100;

double MsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

void PollUntil(AppState& app, PickerState& picker, const auto& isSo) {
    while (!isSo()) {
        RunPosted();
        PollPlayback(app, picker);
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
}

// From the request to the moment at which the new stream has moved.
double MeasureNext(AppState& app, PickerState& picker) {
    const StreamSlot old = CurrentHandle(app.playback);
    const Clock::time_point begin = Clock::now();
    PlayNext(app, picker);
    PollUntil(app, picker, [&] { return CurrentHandle(app.playback) != old; });
    const StreamSlot handle = CurrentHandle(app.playback);
    PollUntil(app, picker, [&] { return PositionSec(handle) > app.playback.startSec; });
    return MsSince(begin);
}

// Beyond the output's own block, which is what a device's buffer is to a device.
void Print(const char* what, std::vector<double> times, double limitMs) {
    constexpr double kMsPerSec = 1000.0;
    const double blockMs = kMsPerSec * static_cast<double>(BlockClock::BlockFrames(kRate)) / kRate;
    for (double& ms : times) ms = std::max(ms - blockMs, 0.0);
    std::sort(times.begin(), times.end());
    const double p95 = times[times.size() * 95 / 100];
    std::fprintf(stderr, "%-10s median %6.1f ms  95 %% %6.1f ms  worst %6.1f ms  limit %.0f ms  %s\n", what,
                 times[times.size() / 2], p95, times.back(), limitMs, p95 <= limitMs ? "kept" : "EXCEEDED");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return std::fprintf(stderr, "usage: next_bench DEMO-MUSIC [--font FILE] [ROUNDS]\n"), 2;
    int rounds = 60;
    AppState app;
    for (int i = 2; i < argc; ++i) {
        if (std::strcmp(argv[i], "--font") == 0 && i + 1 < argc) {
            app.soundFonts.soundFontFiles = {argv[++i]};
        } else {
            rounds = std::max(std::atoi(argv[i]), 10);
        }
    }
    const TemporaryFolder folder;
    std::vector<Song> songs;
    for (const BenchSong& song : MakeBenchSongs(folder.Path(), argv[1], 60)) {
        songs.push_back(MadeSong(song.path, MusicTypeOf(song.path)));
    }
    SetLibrary(app, {songs});
    app.settings.FADE_DURATION_MS = 0;
    app.settings.historyDepth = 20;
    BASS_Init(0, kRate, 0, nullptr, nullptr);
    if (!app.soundFonts.soundFontFiles.empty()) SelectSoundFont(app.soundFonts, app.playback, 0);
    PickerState picker(3);
    std::vector<double> prepared, opened;
    for (int i = 0; i < rounds; ++i) {
        opened.push_back(MeasureNext(app, picker));
        app.playback.endSec = PositionSec(CurrentHandle(app.playback)) + 5.0;  // so that the next one is prepared
        PollUntil(app, picker, [&] { return app.playback.next != nullptr && app.playback.next->opening->IsDone(); });
        prepared.push_back(MeasureNext(app, picker));
    }
    Print("prepared", prepared, 20.0);
    Print("opened", opened, 50.0);
    FreeAllStreams(app.playback, app.soundFonts);
    return 0;
}
