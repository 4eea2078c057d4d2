#include <windows.h>

#include <memory>

#include "platform/folder.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

// The full path in the form without the limit of 260 characters.
std::wstring LongPath(const std::string& path) {
    const std::wstring wide = WideFromUtf8(path);
    const DWORD size = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(GetFullPathNameW(wide.c_str(), size, full.data(), nullptr));
    if (full.empty()) return wide;
    if (full.starts_with(L"\\\\?\\") || full.starts_with(L"\\\\.\\")) return full;
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC" + full.substr(1);
    return L"\\\\?\\" + full;
}

EntryKind KindOf(DWORD attributes) {
    if ((attributes & FILE_ATTRIBUTE_DEVICE) != 0) return EntryKind::kOther;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? EntryKind::kFolder : EntryKind::kFile;
}

// The kind of a link's or junction's target.
EntryKind KindOfTarget(const std::wstring& path) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE target =
        CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (target == INVALID_HANDLE_VALUE) return EntryKind::kOther;
    BY_HANDLE_FILE_INFORMATION information{};
    const bool known = GetFileInformationByHandle(target, &information) != 0;
    CloseHandle(target);
    return known ? KindOf(information.dwFileAttributes) : EntryKind::kOther;
}

bool IsLink(const WIN32_FIND_DATAW& entry) {
    const bool reparse = (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    return reparse && (entry.dwReserved0 == IO_REPARSE_TAG_SYMLINK || entry.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

// Reparse points other than links (cloud files, compressed files) are what their attributes say: opening them could
// start a download.
EntryKind KindOf(const std::wstring& folder, const WIN32_FIND_DATAW& entry) {
    return IsLink(entry) ? KindOfTarget(folder + L'\\' + entry.cFileName) : KindOf(entry.dwFileAttributes);
}

// A cloud file is not opened either.
EntryKind KindOf(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos) return EntryKind::kOther;
    WIN32_FIND_DATAW entry{};
    const std::wstring wide = LongPath(path);
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return EntryKind::kOther;
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return KindOf(attributes);
    const HANDLE search = FindFirstFileW(wide.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return KindOfTarget(wide);  // the root of a drive
    FindClose(search);
    return IsLink(entry) ? KindOfTarget(wide) : KindOf(attributes);
}

// False for a name with an unpaired surrogate.
bool ToUtf8(std::wstring_view wide, std::string& text) {
    const int length = static_cast<int>(wide.size());
    text.resize(wide.size() * 3);
    const int size = WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), length, text.data(),
                                         static_cast<int>(text.size()), nullptr, nullptr);
    if (size > 0) {
        text.resize(static_cast<size_t>(size));
        return true;
    }
    text = Utf8FromWide(wide);
    return false;
}

bool Fail(DWORD code, std::string& error) {
    error = SystemErrorText(code);
    return false;
}

}  // namespace

bool IsFolder(const std::string& path) {
    return KindOf(path) == EntryKind::kFolder;
}

bool IsFile(const std::string& path) {
    return KindOf(path) == EntryKind::kFile;
}

bool ListFolder(const std::string& path, const std::function<void(const FolderEntry&)>& take, std::string& error) {
    if (path.empty() || path.find('\0') != std::string::npos) return Fail(ERROR_PATH_NOT_FOUND, error);
    std::wstring folder = LongPath(path);
    while (folder.ends_with(L'\\')) folder.pop_back();

    WIN32_FIND_DATAW entry{};
    const HANDLE search = FindFirstFileExW((folder + L"\\*").c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch,
                                           nullptr, FIND_FIRST_EX_LARGE_FETCH);
    // Only the root of an empty drive lacks "." and "..".
    if (search == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_FILE_NOT_FOUND || Fail(GetLastError(), error);
    const std::unique_ptr<void, decltype(&FindClose)> close(search, FindClose);

    std::string name;
    do {
        const std::wstring_view wide = entry.cFileName;
        if (wide == L"." || wide == L"..") continue;
        const bool isText = ToUtf8(wide, name);
        take({name, isText, KindOf(folder, entry)});
    } while (FindNextFileW(search, &entry) != 0);
    return GetLastError() == ERROR_NO_MORE_FILES || Fail(GetLastError(), error);
}

}  // namespace hullrider
