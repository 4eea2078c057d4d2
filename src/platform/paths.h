// Folders and paths. Text is UTF-8 inside the player and becomes std::filesystem::path at the system's edge. Callable
// from any thread.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

std::filesystem::path PathFromUtf8(std::string_view text);

// The path as UTF-8. Throws std::range_error when the name is not valid text: an unpaired surrogate on Windows, bytes
// that are not UTF-8 elsewhere.
std::string Utf8FromPath(const std::filesystem::path& path);

// True for well-formed UTF-8 (RFC 3629).
bool IsUtf8(std::string_view text);

// `folder` joined with a relative path that is written with backslashes and may begin with one ("\config.json"), with
// this system's separators.
std::string StatePath(std::string_view folder, std::string_view name);

// The part before the last separator, of either kind; empty without one.
std::string_view FolderOf(std::string_view path);

// The file's name without its folder and its extension.
std::string_view FileStem(std::string_view path);

// The absolute form of the path, without "." and ".." and without a separator at its end.
std::string AbsolutePath(const std::string& path);

// The user's Documents folder; nothing when the system names none.
std::optional<std::string> DocumentsFolder();

// The folder of the running program, and the working directory that it was started in.
std::string ProgramFolder();
std::string WorkingFolder();

}  // namespace hullrider
