// make_demo_music OUTPUT_DIR: writes the demo music below a folder; tools/demo_music/make encodes its recordings.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

#include "demo_music/album.h"

namespace {

bool WriteFile(const std::filesystem::path& folder, const hullrider::demo::MusicFile& file) {
    const std::filesystem::path path = folder / std::filesystem::path(file.path);
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream out(path, std::ios::binary);
    out.write(file.bytes.data(), static_cast<std::streamsize>(file.bytes.size()));
    out.close();
    if (!out) std::fprintf(stderr, "make_demo_music: cannot write %s\n", path.c_str());
    return !out.fail();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_demo_music OUTPUT_DIR\n");
        return 2;
    }
    try {
        const std::filesystem::path folder = argv[1];
        const bool made = hullrider::demo::MakeAlbums([&](const auto& file) { return WriteFile(folder, file); });
        return made ? 0 : 1;
    } catch (const std::exception& mistake) {  // a piece that the notation or a format cannot express
        std::fprintf(stderr, "make_demo_music: %s\n", mistake.what());
        return 1;
    }
}
