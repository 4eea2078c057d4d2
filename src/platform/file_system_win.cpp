#include "platform/file_system.h"

#include <windows.h>

#include <algorithm>

#include "platform/text_win.h"

namespace hullrider {

namespace {

constexpr int kMoveAttempts = 5;
constexpr DWORD kMoveRetryMs = 40;

}  // namespace

WriteResult WriteThrough(const std::filesystem::path& path, std::string_view text) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return WriteResult::kCannotOpen;
    bool good = true;
    while (good && !text.empty()) {
        const DWORD chunk = static_cast<DWORD>(std::min<size_t>(text.size(), size_t{1} << 24));
        DWORD written = 0;
        good = WriteFile(file, text.data(), chunk, &written, nullptr) != 0 && written > 0;
        text.remove_prefix(written);
    }
    good = good && FlushFileBuffers(file) != 0;
    good = CloseHandle(file) != 0 && good;
    return good ? WriteResult::kWritten : WriteResult::kCannotWrite;
}

bool MoveOver(const std::filesystem::path& from, const std::filesystem::path& to, std::string& error) {
    constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH;
    // A virus scanner or an indexer may open a file for a moment right after it was written.
    for (int attempt = 0; attempt < kMoveAttempts; ++attempt) {
        if (attempt > 0) Sleep(kMoveRetryMs);
        if (MoveFileExW(from.c_str(), to.c_str(), kFlags) != 0) return true;
        const DWORD code = GetLastError();
        error = SystemErrorText(code);
        if (code != ERROR_SHARING_VIOLATION && code != ERROR_ACCESS_DENIED) return false;
    }
    return false;
}

bool CopyOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    return CopyFileW(from.c_str(), to.c_str(), FALSE) != 0;
}

}  // namespace hullrider
