// Songs to measure with, made in the temporary folder: every compressed kind by the ffmpeg command, MIDI files and
// modules from the demo music.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace hullrider {

struct BenchSong {
    std::string kind;  // for the report
    std::string path;
    bool isModule = false;
};

// About `count` of them, all kinds alike. Each is a file of its own, of 20 to 90 seconds if it is not of the demo
// music.
std::vector<BenchSong> MakeBenchSongs(const std::filesystem::path& folder, const std::filesystem::path& demoMusic,
                                      int count);

}  // namespace hullrider
