#include "platform/paths.h"

#include <shlobj.h>
#include <windows.h>

namespace hullrider {

std::optional<std::string> DocumentsFolder() {
    wchar_t folder[MAX_PATH] = {};
    if (SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, folder) != S_OK) return std::nullopt;
    return Utf8FromPath(folder);
}

std::string ProgramFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) return WorkingFolder();
        if (length < path.size()) {
            path.resize(length);
            return Utf8FromPath(std::filesystem::path(path).parent_path());
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace hullrider
