// Text of unknown encoding, as in the tags of old files, recognized by which decodings are valid. Callable from any
// thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

// As UTF-8. UTF-8, and UTF-16 with a byte order mark, come first; then Shift-JIS where it reads as Japanese; then
// Windows-1252, a superset of ISO 8859-1. UTF-8 that was once decoded as ISO 8859-1 is repaired. A character cut off at
// the end of a full field is dropped. Nothing when no decoding is valid.
std::optional<std::string> ReadableText(std::string_view bytes);

// Whether the bytes are Shift-JIS that reads as Japanese: kana or kanji, not the accented letters and box drawings of
// another encoding.
bool IsJapanese(std::string_view bytes);

// Shift-JIS (code page 932) to UTF-8 by the system's converter; nothing when there is none or the bytes are invalid.
std::optional<std::string> Utf8FromShiftJis(std::string_view bytes);

}  // namespace hullrider
