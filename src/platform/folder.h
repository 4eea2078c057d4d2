// What lies in a folder, on paths of any length. Callable from any thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace hullrider {

// A link counts as what it leads to; one that leads nowhere, a device or a pipe is kOther.
enum class EntryKind { kFile, kFolder, kOther };

struct FolderEntry {
    std::string_view name;   // its own name without the folder, UTF-8; valid during the call only
    bool nameIsText = true;  // false: the name has no UTF-8 form, `name` is for show only
    EntryKind kind = EntryKind::kOther;
};

bool IsFolder(const std::string& path);
bool IsFile(const std::string& path);  // a regular one, or a link to one

// Calls `take` for every entry of the folder but "." and "..", in the order in which the system lists them. False when
// the folder cannot be opened or not be read to its end: `error` receives the system's text, and what was taken until
// then stands.
bool ListFolder(const std::string& path, const std::function<void(const FolderEntry&)>& take, std::string& error);

// `folder` and `name` with one separator of this system between them.
std::string JoinPath(std::string_view folder, std::string_view name);

}  // namespace hullrider
