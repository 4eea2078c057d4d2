// selection_bench [ROUNDS]: what one pick costs in a library of 100 000 songs, and one that finds the library changed.
// The files are not asked for: the worker that opens them does that.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "library/song_counts.h"
#include "playback/song_selection.h"
#include "tests/playback/made_library.h"

namespace {

using namespace hullrider;

constexpr int kFolders = 5'000;
constexpr int kSongsPerFolder = 20;
constexpr double kLimitUs = 20.0;

void FillLibrary(AppState& app) {
    std::vector<std::vector<Song>> playlists(kFolders);
    for (int folder = 0; folder < kFolders; ++folder) {
        for (int song = 0; song < kSongsPerFolder; ++song) {
            const int32_t type = song == 0 ? kMidi : song == 1 ? kTracker : kMp3;
            const bool favorite = (folder * kSongsPerFolder + song) % 37 == 0;
            playlists[static_cast<size_t>(folder)].push_back(
                MadeSong("/music/An Album " + std::to_string(folder) + "/" + std::to_string(song) + ".mp3", type,
                         favorite ? 1 : 0, favorite ? song % 5 : 0));
        }
    }
    playlists.push_back({MadeSong("/other/Album/1.mp3", kMp3), MadeSong("/other/Album/2.mid", kMidi),
                         MadeSong("/other/Album/3.xm", kTracker)});
    SetLibrary(app, std::move(playlists));
}

template <typename Work>
double MicrosecondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
}

void PrintQuantiles(const char* what, std::vector<double> times, double limitUs) {
    std::sort(times.begin(), times.end());
    const double median = times[times.size() / 2];
    std::printf("%-36s median %9.2f us  99 %% %9.2f us  worst %9.2f us", what, median, times[times.size() * 99 / 100],
                times.back());
    if (limitUs > 0.0) std::printf("  limit %.0f us  %s", limitUs, median <= limitUs ? "kept" : "EXCEEDED");
    std::printf("\n");
}

std::vector<double> TimePicks(AppState& app, PickerState& picker, int rounds) {
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        times.push_back(MicrosecondsOf([&] { TakeEffect(app, SelectNextSong(app, picker, kNoCategory)); }));
    }
    return times;
}

}  // namespace

int main(int argc, char** argv) {
    const int rounds = std::max(argc == 2 ? std::atoi(argv[1]) : 200'000, 100);
    AppState app;
    FillLibrary(app);
    PickerState picker(1);
    TimePicks(app, picker, 1000);
    for (const int32_t depth : {-1, 20, 10'000}) {
        app.settings.historyDepth = depth;
        const std::string what = "a pick, history " + std::to_string(depth);
        PrintQuantiles(what.c_str(), TimePicks(app, picker, rounds), kLimitUs);
    }
    app.settings.historyDepth = 20;
    std::vector<double> withoutDrive;
    for (int i = 0; i < 20; ++i) {
        PickerState found(static_cast<uint64_t>(i));  // as an opening has found it
        found.unavailable.NoteAwayFolder("/music");
        TakeEffect(app, SelectNextSong(app, found, kNoCategory));
        withoutDrive.push_back(MicrosecondsOf([&] { SelectNextSong(app, found, kNoCategory); }));
    }
    PrintQuantiles("a pick, all of it away but one album", withoutDrive, 1000.0);
    std::vector<double> rebuilds;
    for (int i = 0; i < 20; ++i) {
        Recount(app);
        rebuilds.push_back(TimePicks(app, picker, 1).front());
    }
    PrintQuantiles("the first pick after a change", rebuilds, 0.0);
    return 0;
}
