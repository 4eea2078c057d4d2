#include "platform/files.h"

#include <filesystem>
#include <fstream>
#include <mutex>
#include <new>
#include <set>
#include <system_error>

#include "platform/console.h"
#include "platform/file_system.h"
#include "platform/folder.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr uintmax_t kMostCopiedBytes = uintmax_t{64} << 20;

// Files that were not understood and could not be kept. They must be kept before they are overwritten.
class UnkeptFiles {
public:
    bool Holds(const std::string& path) {
        const std::lock_guard lock(mutex_);
        return paths_.contains(path);
    }
    void Note(const std::string& path, bool kept) {
        const std::lock_guard lock(mutex_);
        if (kept) {
            paths_.erase(path);
        } else {
            paths_.insert(path);
        }
    }

private:
    std::mutex mutex_;
    std::set<std::string> paths_;
};

UnkeptFiles& TheUnkeptFiles() {
    static UnkeptFiles files;
    return files;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path, size_t maxBytes) {
    const std::filesystem::path file = PathFromUtf8(path);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
    const uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > maxBytes) return std::nullopt;

    std::ifstream in(file, std::ios::binary);
    if (!in) return std::nullopt;
    try {
        std::string text(static_cast<size_t>(size), '\0');
        in.read(text.data(), static_cast<std::streamsize>(text.size()));
        if (in.bad()) return std::nullopt;
        text.resize(static_cast<size_t>(in.gcount()));  // the file may have shrunk meanwhile
        return text;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

WriteResult WriteWholeFile(const std::string& path, const std::string& temporaryPath, std::string_view text,
                           std::string& moveError) {
    if (TheUnkeptFiles().Holds(path) && IsFile(path) && !KeepBadFile(path)) {
        moveError = "The old file could not be understood, and no copy of it could be kept.";
        return WriteResult::kCannotMove;
    }
    const std::filesystem::path temporary = PathFromUtf8(temporaryPath);
    const WriteResult written = WriteThrough(temporary, text);
    if (written == WriteResult::kWritten) {
        if (MoveOver(temporary, PathFromUtf8(path), moveError)) {
            TheUnkeptFiles().Note(path, true);
            return WriteResult::kWritten;
        }
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
    // Copying a file that is too large to read would take as long as reading it.
    std::error_code ignored;
    const bool isLarge = std::filesystem::file_size(PathFromUtf8(path), ignored) > kMostCopiedBytes && !ignored;
    bool good = !isLarge && CopyOver(PathFromUtf8(path), copy) && MoveOver(copy, PathFromUtf8(kept), moveError);
    if (!good) {
        std::filesystem::remove(copy, ignored);
        good = IsFile(path) && MoveOver(PathFromUtf8(path), PathFromUtf8(kept), moveError);
    }
    TheUnkeptFiles().Note(path, good || !IsFile(path));
    if (!good) PrintErrorLine("Could not keep a copy of the unreadable file: " + kept);
    return good;
}

}  // namespace hullrider
