// Text at the Windows edge: UTF-8 inside, UTF-16 in the calls. Windows sources only.
#pragma once

#include <string>
#include <string_view>

namespace hullrider {

// Malformed input becomes U+FFFD.
std::wstring WideFromUtf8(std::string_view text);
std::string Utf8FromWide(std::wstring_view text);

// The system's text for a GetLastError code, without its line end.
std::string SystemErrorText(unsigned long code);

}  // namespace hullrider
