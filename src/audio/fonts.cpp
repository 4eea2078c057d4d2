#include "audio/fonts.h"

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "audio/bass.h"
#include "audio/synth.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

// Whether the file is as long as its SoundFont header says (the SoundFont 2.04 format, section 4). The synthesizer
// would try anything else as another format and complain on the error stream.
bool LooksLikeFont(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    unsigned char head[12] = {};
    in.read(reinterpret_cast<char*>(head), sizeof head);
    if (!in || std::memcmp(head, "RIFF", 4) != 0 || std::memcmp(head + 8, "sfbk", 4) != 0) return false;
    const uint32_t bytes =
        uint32_t{head[4]} | uint32_t{head[5]} << 8 | uint32_t{head[6]} << 16 | uint32_t{head[7]} << 24;
    std::error_code error;
    const uintmax_t size = std::filesystem::file_size(file, error);
    return !error && size >= uintmax_t{bytes} + 8;
}

}  // namespace

std::shared_ptr<const Font> LoadFont(const std::string& path, int& error) {
    std::error_code missing;
    if (!IsUtf8(path) || !std::filesystem::is_regular_file(PathFromUtf8(path), missing)) {
        error = BASS_ERROR_FILEOPEN;
        return nullptr;
    }
    if (!LooksLikeFont(PathFromUtf8(path))) {
        error = BASS_ERROR_FILEFORM;
        return nullptr;
    }
    // Tried in a synthesizer that is never heard; those of the streams load it again, which costs only its directory.
    Synth trial(44100);
    if (!trial.Good()) {
        error = BASS_ERROR_MEM;
        return nullptr;
    }
    if (trial.Load(path) < 0) {
        error = BASS_ERROR_FILEFORM;
        return nullptr;
    }
    error = BASS_OK;
    std::error_code unknown;
    const auto written = std::filesystem::last_write_time(PathFromUtf8(path), unknown).time_since_epoch().count();
    return std::make_shared<const Font>(Font{path, unknown ? 0 : static_cast<int64_t>(written)});
}

}  // namespace hullrider
