#include <dirent.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <system_error>

#include "platform/folder.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

EntryKind KindOf(const struct stat& status) {
    if (S_ISREG(status.st_mode)) return EntryKind::kFile;
    return S_ISDIR(status.st_mode) ? EntryKind::kFolder : EntryKind::kOther;
}

// Most file systems give the kind along with the name. Links, and all entries on other file systems, cost a call.
EntryKind KindOf(int folder, const dirent& entry) {
    switch (entry.d_type) {
        case DT_REG:
            return EntryKind::kFile;
        case DT_DIR:
            return EntryKind::kFolder;
        case DT_LNK:
        case DT_UNKNOWN:
            break;
        default:
            return EntryKind::kOther;
    }
    struct stat status {};
    return fstatat(folder, entry.d_name, &status, 0) == 0 ? KindOf(status) : EntryKind::kOther;
}

bool Fail(int code, std::string& error) {
    error = std::generic_category().message(code);
    return false;
}

EntryKind KindOf(const std::string& path) {
    struct stat status {};
    const bool found = path.find('\0') == std::string::npos && stat(path.c_str(), &status) == 0;
    return found ? KindOf(status) : EntryKind::kOther;
}

}  // namespace

bool IsFolder(const std::string& path) {
    return KindOf(path) == EntryKind::kFolder;
}

bool IsFile(const std::string& path) {
    return KindOf(path) == EntryKind::kFile;
}

bool ListFolder(const std::string& path, const std::function<void(const FolderEntry&)>& take, std::string& error) {
    if (path.find('\0') != std::string::npos) return Fail(ENOENT, error);
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(path.c_str()), closedir);
    if (!folder) return Fail(errno, error);
    for (;;) {
        errno = 0;
        const dirent* const entry = readdir(folder.get());
        if (entry == nullptr) return errno == 0 || Fail(errno, error);
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") continue;
        take({name, IsUtf8(name), KindOf(dirfd(folder.get()), *entry)});
    }
}

}  // namespace hullrider
