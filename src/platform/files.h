// State files are read and written whole. Callable from any thread; callers keep two writers of one file apart.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

// The whole file. Nothing when it cannot be opened or read to its end, is not a regular file, holds more than
// `maxBytes`, or there is no memory for it.
std::optional<std::string> ReadWholeFile(const std::string& path, size_t maxBytes);

// The result of a write. Each failure leaves the old file as it was.
enum class WriteResult { kWritten, kCannotOpen, kCannotWrite, kCannotMove };

// Writes `text` to `temporaryPath`, flushes it to disk and moves it over `path`, so that a crash, a kill or a full disk
// leaves either the old file or the new one. On kCannotMove `moveError` receives the system's text. A file that
// KeepBadFile could not keep is kept first; when that fails again, nothing is written.
WriteResult WriteWholeFile(const std::string& path, const std::string& temporaryPath, std::string_view text,
                           std::string& moveError);

// The same beside the file, as "NAME.tmp". True when the new file is in place.
bool WriteWholeFile(const std::string& path, std::string_view text);

// Keeps a copy of a file that could not be understood beside it, as "NAME.bad", so that the next save loses nothing. An
// older .bad is replaced. A file that is too large or cannot be read is moved instead. False, with a line on the error
// stream, when that failed (another program holds it): then WriteWholeFile tries again before it writes.
bool KeepBadFile(const std::string& path);

}  // namespace hullrider
