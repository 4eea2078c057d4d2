#include "bench/bench_songs.h"

#include "bench/run_program.h"

namespace hullrider {

namespace fs = std::filesystem;

namespace {

struct Encoding {
    const char* kind;
    const char* extension;
    std::vector<std::string> options;
};

const std::vector<Encoding> kEncodings = {
    {"flac", ".flac", {"-c:a", "flac"}},
    {"mp3 cbr", ".mp3", {"-c:a", "libmp3lame", "-b:a", "192k"}},
    {"mp3 vbr", ".mp3", {"-c:a", "libmp3lame", "-q:a", "3", "-write_xing", "1"}},
    {"m4a", ".m4a", {"-c:a", "aac", "-b:a", "128k"}},
    {"wav", ".wav", {"-c:a", "pcm_s16le"}},
};

constexpr int kOriginals = 4;  // of each encoding; the rest are copies

void Encode(const Encoding& encoding, int number, const fs::path& file) {
    constexpr int kShortestSec = 20, kStepSec = 23;
    const std::string seconds = std::to_string(kShortestSec + kStepSec * number);
    const std::string rate = number % 2 == 0 ? "44100" : "48000";
    std::vector<std::string> arguments = {"ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i"};
    arguments.push_back("anoisesrc=color=pink:amplitude=0.4:duration=" + seconds + ":sample_rate=" + rate +
                        ":seed=" + std::to_string(number));
    for (const char* const option : {"-ac", "2"}) arguments.emplace_back(option);
    arguments.insert(arguments.end(), encoding.options.begin(), encoding.options.end());
    arguments.push_back(file.string());
    RunProgram(std::move(arguments));
}

void AddEncoded(std::vector<BenchSong>& songs, const fs::path& folder, int each) {
    for (const Encoding& encoding : kEncodings) {
        std::vector<fs::path> originals;
        for (int i = 0; i < each; i++) {
            const fs::path file = folder / (std::string(encoding.kind) + " " + std::to_string(i) + encoding.extension);
            if (i < kOriginals) {
                Encode(encoding, i, file);
                originals.push_back(file);
            } else {
                fs::copy_file(originals[static_cast<size_t>(i % kOriginals)], file);
            }
            songs.push_back({encoding.kind, file.string()});
        }
    }
}

void AddDemo(std::vector<BenchSong>& songs, const fs::path& folder, const fs::path& demoMusic, int each) {
    std::vector<fs::path> midi, modules;
    for (const auto& entry : fs::recursive_directory_iterator(demoMusic)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".mid") midi.push_back(entry.path());
        if (extension == ".mod" || extension == ".xm" || extension == ".s3m") modules.push_back(entry.path());
    }
    for (const auto* const kind : {&midi, &modules}) {
        if (kind->empty()) continue;
        const bool isModule = kind == &modules;
        for (int i = 0; i < each; i++) {
            const fs::path& original = (*kind)[static_cast<size_t>(i) % kind->size()];
            const fs::path file = folder / ("demo " + std::to_string(i) + original.extension().string());
            fs::copy_file(original, file);
            songs.push_back({isModule ? "module" : "midi", file.string(), isModule});
        }
    }
}

}  // namespace

std::vector<BenchSong> MakeBenchSongs(const fs::path& folder, const fs::path& demoMusic, int count) {
    const int each = count / static_cast<int>(kEncodings.size() + 2);
    std::vector<BenchSong> songs;
    AddEncoded(songs, folder, each);
    AddDemo(songs, folder, demoMusic, each);
    return songs;
}

}  // namespace hullrider
