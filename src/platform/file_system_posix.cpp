#include "platform/file_system.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace hullrider {

WriteResult WriteThrough(const std::filesystem::path& path, std::string_view text) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0) return WriteResult::kCannotOpen;
    bool good = true;
    while (good && !text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<size_t>(written));
        } else {
            good = errno == EINTR;
        }
    }
    good = good && fsync(file) == 0;
    good = close(file) == 0 && good;
    return good ? WriteResult::kWritten : WriteResult::kCannotWrite;
}

bool MoveOver(const std::filesystem::path& from, const std::filesystem::path& to, std::string& error) {
    std::error_code code;
    std::filesystem::rename(from, to, code);
    if (code == std::errc::cross_device_link) {
        if (!CopyOver(from, to)) {
            error = code.message();
            return false;
        }
        std::filesystem::remove(from, code);
    }
    if (code) error = code.message();
    return !code;
}

bool CopyOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::error_code error;
    return std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, error);
}

}  // namespace hullrider
