// The demo music as files.
#pragma once

#include <functional>
#include <string>

namespace hullrider::demo {

struct MusicFile {
    std::string path;  // below the music folder, UTF-8: "ALBUM/TITLE.mid"
    std::string bytes;
};

// Makes the nine pieces one after another and hands each over. A recording comes as "TITLE.EXTENSION.wav", to be
// encoded into "TITLE.EXTENSION". Stops, and returns false, when `take` returns false.
bool MakeAlbums(const std::function<bool(const MusicFile&)>& take);

}  // namespace hullrider::demo
