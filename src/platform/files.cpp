#include "platform/files.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/console.h"
#include "platform/file_system.h"
#include "platform/folder.h"
#include "platform/paths.h"

namespace hullrider {

std::optional<std::string> ReadWholeFile(const std::string& path, size_t maxBytes) {
    const std::filesystem::path file = PathFromUtf8(path);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
    const uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > maxBytes) return std::nullopt;

    std::ifstream in(file, std::ios::binary);
    if (!in) return std::nullopt;
    std::string text(static_cast<size_t>(size), '\0');
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (in.bad()) return std::nullopt;
    text.resize(static_cast<size_t>(in.gcount()));  // it may have shrunk meanwhile
    return text;
}

WriteResult WriteWholeFile(const std::string& path, const std::string& temporaryPath, std::string_view text,
                           std::string& moveError) {
    const std::filesystem::path temporary = PathFromUtf8(temporaryPath);
    const WriteResult written = WriteThrough(temporary, text);
    if (written == WriteResult::kWritten) {
        if (MoveOver(temporary, PathFromUtf8(path), moveError)) return WriteResult::kWritten;
    }
    std::error_code ignored;
    if (written != WriteResult::kCannotOpen) std::filesystem::remove(temporary, ignored);
    return written == WriteResult::kWritten ? WriteResult::kCannotMove : written;
}

bool WriteWholeFile(const std::string& path, std::string_view text) {
    std::string moveError;
    return WriteWholeFile(path, path + ".tmp", text, moveError) == WriteResult::kWritten;
}

bool KeepBadFile(const std::string& path) {
    const std::string kept = path + ".bad";
    const std::filesystem::path copy = PathFromUtf8(kept + ".tmp");
    std::string moveError;
    if (CopyOver(PathFromUtf8(path), copy) && MoveOver(copy, PathFromUtf8(kept), moveError)) return true;
    std::error_code ignored;
    std::filesystem::remove(copy, ignored);
    if (IsFile(path) && MoveOver(PathFromUtf8(path), PathFromUtf8(kept), moveError)) return true;
    PrintErrorLine("Could not keep a copy of the unreadable file: " + kept);
    return false;
}

}  // namespace hullrider
