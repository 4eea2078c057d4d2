#include <windows.h>

#include "platform/charset.h"
#include "platform/text_win.h"

namespace hullrider {

std::optional<std::string> Utf8FromShiftJis(std::string_view bytes) {
    constexpr UINT kShiftJis = 932;
    if (bytes.empty()) return std::string();
    std::wstring wide(bytes.size(), L'\0');  // every character takes at least one byte there
    const auto size = static_cast<int>(bytes.size());
    const int length =
        MultiByteToWideChar(kShiftJis, MB_ERR_INVALID_CHARS, bytes.data(), size, wide.data(), size);
    if (length <= 0) return std::nullopt;
    wide.resize(static_cast<size_t>(length));
    return Utf8FromWide(wide);
}

}  // namespace hullrider
