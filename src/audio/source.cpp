#include "audio/source.h"

#include <fstream>
#include <string_view>
#include <system_error>

#include "audio/bass.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

// The first bytes of the file, enough to recognize a MIDI file; false when it cannot be read.
bool ReadStart(const std::string& path, std::string& start) {
    if (!IsUtf8(path)) return false;
    const std::filesystem::path file = PathFromUtf8(path);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return false;
    std::ifstream in(file, std::ios::binary);
    if (!in) return false;
    start.resize(12);
    in.read(start.data(), static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<size_t>(in.gcount()));
    return !in.bad();
}

bool IsMidi(std::string_view start) {
    return start.starts_with("MThd") || (start.starts_with("RIFF") && start.ends_with("RMID") && start.size() == 12);
}

}  // namespace

std::unique_ptr<Source> OpenStreamSource(const SourceRequest& request, const FontList& fonts, int& error) {
    std::string start;
    if (!ReadStart(request.path, start)) {
        error = BASS_ERROR_FILEOPEN;
        return nullptr;
    }
    if (IsMidi(start)) return OpenMidiSource(request, fonts, error);
    return OpenFfmpegSource(request, error);
}

}  // namespace hullrider
