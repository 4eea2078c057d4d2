#include <iconv.h>

#include "platform/charset.h"

namespace hullrider {

std::optional<std::string> Utf8FromShiftJis(std::string_view bytes) {
    const iconv_t converter = iconv_open("UTF-8", "CP932");
    if (converter == iconv_t(-1)) return std::nullopt;
    std::string from(bytes), text(bytes.size() * 3, '\0');  // no character takes more bytes in UTF-8
    size_t fromLeft = from.size(), toLeft = text.size();
    char* source = from.data();
    char* target = text.data();
    const size_t result = iconv(converter, &source, &fromLeft, &target, &toLeft);
    iconv_close(converter);
    if (result == static_cast<size_t>(-1) || fromLeft > 0) return std::nullopt;
    text.resize(text.size() - toLeft);
    return text;
}

}  // namespace hullrider
