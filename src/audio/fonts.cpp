#include "audio/fonts.h"

#include <filesystem>
#include <mutex>
#include <system_error>

#include "audio/bass.h"
#include "audio/synth.h"
#include "platform/paths.h"

namespace hullrider {

std::shared_ptr<const Font> LoadFont(const std::string& path, int& error) {
    std::error_code missing;
    if (!std::filesystem::is_regular_file(PathFromUtf8(path), missing)) {
        error = BASS_ERROR_FILEOPEN;
        return nullptr;
    }
    // A synthesizer that never sounds tries it; those of the streams load it again, which costs its directory only.
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
    return std::make_shared<const Font>(Font{path});
}

}  // namespace hullrider
