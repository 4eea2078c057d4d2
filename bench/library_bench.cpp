// library_bench [ROUNDS]: what the library costs with 100 000 songs in 5 000 folders, each figure beside its yardstick
// and its limit. Makes its tree of empty files in the temporary folder and removes it. Needs `find`.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "bench/run_program.h"
#include "library/cache.h"
#include "library/scan.h"
#include "library/song_counts.h"
#include "tests/temporary_folder.h"

namespace {

using namespace hullrider;
namespace fs = std::filesystem;

constexpr int kFolders = 5'000;
constexpr int kSongsPerFolder = 20;

void MakeTree(const fs::path& music) {
    for (int folder = 0; folder < kFolders; ++folder) {
        const fs::path album = music / ("Some Artist - An Album " + std::to_string(folder));
        fs::create_directories(album);
        for (int song = 0; song < kSongsPerFolder; ++song) {
            const char* const extension = song % 10 == 0 ? ".mid" : song % 10 == 1 ? ".xm" : ".mp3";
            std::ofstream(album / (std::to_string(song) + " - The title of a song" + extension));
        }
    }
}

double MillisecondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

size_t HeapBytes(const std::string& text) {
    constexpr size_t kInside = 15;  // a short text lies in the string itself
    return text.capacity() > kInside ? text.capacity() + 1 : 0;
}

double MegabytesOf(const std::vector<Playlist>& playlists) {
    size_t bytes = playlists.capacity() * sizeof(Playlist);
    for (const Playlist& playlist : playlists) {
        bytes += HeapBytes(playlist.albumName) + playlist.songs.capacity() * sizeof(Song);
        for (const Song& song : playlist.songs) bytes += HeapBytes(song.songPath);
    }
    return static_cast<double>(bytes) / 1e6;
}

// A line of /proc/self/status that is given in kB, in megabytes.
double StatusMegabytes(const std::string& field) {
    std::ifstream in("/proc/self/status");
    std::string word;
    double kilobytes = 0.0;
    while (in >> word && word != field + ":") {
    }
    in >> kilobytes;
    return kilobytes * 1024.0 / 1e6;
}

// In a process of its own, whose peak is that of the load alone: prints by how much the load raised the peak of the
// resident memory, and what the loaded library takes.
int PrintMemoryOfLoad(const char* cachePath) {
    const double before = StatusMegabytes("VmRSS");
    const std::vector<Playlist> playlists = LoadMusicLibraryCache(cachePath);
    std::printf("%f %f\n", StatusMegabytes("VmHWM") - before, MegabytesOf(playlists));
    return 0;
}

void PrintRow(const char* what, double measured, const char* unit, double limit, const char* limitIs) {
    std::printf("%-34s %8.1f %-3s  limit %8.1f %-3s  %-10s %s\n", what, measured, unit, limit, unit,
                measured <= limit ? "kept" : "EXCEEDED", limitIs);
}

struct Timings {
    std::vector<double> findMs, scanMs, saveMs, loadMs;
};

// The first round only warms the file system's caches.
Timings MeasureRounds(const std::string& music, const std::string& cache, int rounds) {
    Timings timings;
    MusicLibrary library;
    for (int round = 0; round <= rounds; ++round) {
        MusicLibrary loaded;
        const double findMs = MillisecondsOf([&] { RunProgram({"find", music, "-type", "f"}); });
        const double scanMs = MillisecondsOf([&] { library.playlists = ScanDirectory(music, library); });
        const double saveMs = MillisecondsOf([&] { SaveMusicLibraryCache(cache, library); });
        const double loadMs = MillisecondsOf([&] { loaded.playlists = LoadMusicLibraryCache(cache); });
        if (SongCountOf(library) != kFolders * kSongsPerFolder || SongCountOf(loaded) != SongCountOf(library)) {
            std::fprintf(stderr, "songs are missing\n");
            std::exit(1);
        }
        if (round == 0) continue;
        timings.findMs.push_back(findMs);
        timings.scanMs.push_back(scanMs);
        timings.saveMs.push_back(saveMs);
        timings.loadMs.push_back(loadMs);
    }
    return timings;
}

// Keeps the standard output quiet while it lives: every save tells of its success.
class QuietOutput {
public:
    QuietOutput() : console_(dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    ~QuietOutput() {
        std::fflush(stdout);
        dup2(console_, STDOUT_FILENO);
        close(console_);
    }
    QuietOutput(const QuietOutput&) = delete;
    QuietOutput& operator=(const QuietOutput&) = delete;

private:
    int console_;
};

void Bench(int rounds) {
    const TemporaryFolder folder;
    const std::string music = folder.At("music");
    const std::string cache = folder.At("cache.json");
    std::printf("making %d files in %d folders ...\n", kFolders * kSongsPerFolder, kFolders);
    std::fflush(stdout);
    MakeTree(folder.Path() / "music");

    Timings timings;
    {
        const QuietOutput quiet;
        timings = MeasureRounds(music, cache, rounds);
    }
    const std::string report = folder.At("memory");
    RunProgram({"/proc/self/exe", "--memory-of-load", cache}, report.c_str());
    double peakMb = 0.0, ownMb = 0.0;
    std::ifstream(report) >> peakMb >> ownMb;

    const double findMs = Median(timings.findMs);
    std::printf("\nmedians of %d rounds, warm; the cache file has %.1f MB\n\n", rounds,
                static_cast<double>(fs::file_size(PathFromUtf8(cache))) / 1e6);
    std::printf("%-34s %8.1f ms\n", "find TREE -type f", findMs);
    PrintRow("ScanDirectory", Median(timings.scanMs), "ms", 1.5 * findMs, "1.5 x find");
    PrintRow("LoadMusicLibraryCache", Median(timings.loadMs), "ms", 300.0, "");
    PrintRow("SaveMusicLibraryCache, with sync", Median(timings.saveMs), "ms", 400.0, "");
    std::printf("%-34s %8.1f MB\n", "the loaded library itself", ownMb);
    PrintRow("peak memory of the load", peakMb, "MB", 3.0 * ownMb, "3 x the library");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::string(argv[1]) == "--memory-of-load") return PrintMemoryOfLoad(argv[2]);
    const int rounds = argc == 2 ? std::atoi(argv[1]) : 9;
    Bench(std::max(rounds, 1));
    return 0;
}
