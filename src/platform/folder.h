// What lies in a folder, on paths of any length. Callable from any thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace hullrider {

// A link counts as its target; a broken link, a device or a pipe is kOther.
enum class EntryKind { kFile, kFolder, kOther };

struct FolderEntry {
    std::string_view name;   // its own name without the folder, UTF-8; valid during the call only
    bool nameIsText = true;  // false: the name has no UTF-8 form, and `name` is only for display
    EntryKind kind = EntryKind::kOther;
};

bool IsFolder(const std::string& path);
bool IsFile(const std::string& path);  // a regular one, or a link to one

// Calls `take` for every entry of the folder but "." and "..", in the system's order. False when the folder cannot be
// opened, or not read to its end: `error` receives the system's text, and the entries taken so far stand.
bool ListFolder(const std::string& path, const std::function<void(const FolderEntry&)>& take, std::string& error);

// `folder` and `name` joined by one separator of this system.
std::string JoinPath(std::string_view folder, std::string_view name);

}  // namespace hullrider
