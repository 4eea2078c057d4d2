// What the engine draws from: one source of chance for each kind of draw, and how it is known whether a drawn song's
// file is there.
#pragma once

#include <string>

#include "platform/folder.h"
#include "playback/random.h"

namespace hullrider {

struct Draws {
    Draws() = default;
    explicit Draws(uint64_t seed) : category(seed), song(~seed), window(seed + 1), font(seed + 2) {}

    Random category;
    Random song;
    Random window;  // where a song starts and how long it plays
    Random font;
    bool (*fileExists)(const std::string& path) = IsFile;
    bool (*folderExists)(const std::string& path) = IsFolder;
};

}  // namespace hullrider
