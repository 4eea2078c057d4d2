// Folders and paths. Text is UTF-8 everywhere inside the player; std::filesystem::path stands at the edge to the
// system. Callable from any thread.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

std::filesystem::path PathFromUtf8(std::string_view text);

// The path as UTF-8. Throws std::range_error when the name is not text: an unpaired surrogate on Windows, bytes that
// are not UTF-8 elsewhere.
std::string Utf8FromPath(const std::filesystem::path& path);

// True when every byte sequence is well-formed UTF-8 (RFC 3629).
bool IsUtf8(std::string_view text);

// `folder` joined with a relative path written with backslashes that may begin with one ("\config.json"), with the
// separators of this system.
std::string StatePath(std::string_view folder, std::string_view name);

// What is before the last separator, of either kind; empty without one.
std::string_view FolderOf(std::string_view path);

// The file's name without its folder and its extension.
std::string_view FileStem(std::string_view path);

// The same place as seen from any working directory, without "." and ".." and without a separator at its end.
std::string AbsolutePath(const std::string& path);

// The user's Documents folder, or nothing when the system does not tell.
std::optional<std::string> DocumentsFolder();

// The folder that holds the running program, and the one it was started in.
std::string ProgramFolder();
std::string WorkingFolder();

}  // namespace hullrider
