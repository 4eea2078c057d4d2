#include "app/handover.h"

#include "platform/paths.h"

namespace hullrider {

std::string HandoverText(const std::vector<std::string>& paths) {
    std::string text;
    for (const std::string& path : paths) text += path + '\0';
    return text;
}

std::vector<std::string> PathsOfHandover(std::string_view text) {
    if (text.empty() || text.back() != '\0' || !IsUtf8(text)) return {};
    std::vector<std::string> paths;
    for (size_t from = 0; from < text.size();) {
        const size_t end = text.find('\0', from);
        if (end == from) return {};
        paths.emplace_back(text.substr(from, end - from));
        from = end + 1;
    }
    return paths;
}

}  // namespace hullrider
