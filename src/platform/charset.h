// Text of unknown encoding, as the tags of old files have it. Told apart by which readings are valid. Callable from any
// thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

// As UTF-8: what is UTF-8, or UTF-16 behind a byte order mark, as it is; otherwise Shift-JIS where that reads as
// Japanese; otherwise Windows-1252, which holds ISO 8859-1. UTF-8 that came about by reading any of these as ISO 8859-1
// is put right. A character that broke off at the end of a full field is left out. Nothing when no reading is valid.
std::optional<std::string> ReadableText(std::string_view bytes);

// Whether the bytes are Shift-JIS that reads as Japanese: kana or kanji that are not the accented letters and box
// drawings of another encoding.
bool IsJapanese(std::string_view bytes);

// Shift-JIS (code page 932) to UTF-8 by the system; nothing when the system does not know it or the bytes are invalid.
std::optional<std::string> Utf8FromShiftJis(std::string_view bytes);

}  // namespace hullrider
