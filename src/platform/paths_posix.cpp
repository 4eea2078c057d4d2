#include "platform/paths.h"

#include <cstdlib>

namespace hullrider {

// XDG_DOCUMENTS_DIR if the desktop exports it, else Documents in the home folder, else the home folder itself, because
// a machine without a desktop has no Documents.
std::optional<std::string> DocumentsFolder() {
    const char* configured = std::getenv("XDG_DOCUMENTS_DIR");
    if (configured != nullptr && *configured == '/') return std::string(configured);
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0') return std::nullopt;
    const std::string documents = std::string(home) + "/Documents";
    std::error_code error;
    return std::filesystem::is_directory(documents, error) ? documents : std::string(home);
}

std::string ProgramFolder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? WorkingFolder() : Utf8FromPath(program.parent_path());
}

}  // namespace hullrider
