#include "dialogs/number_rule.h"

#include <charconv>

namespace hullrider {

std::optional<int32_t> ReadNumber(std::string_view text, int32_t lowest, int32_t highest, std::string& remark) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc() && end == text.data() + text.size() && value >= lowest && value <= highest) {
        remark.clear();
        return value;
    }
    remark = std::to_string(lowest) + " to " + std::to_string(highest);
    return std::nullopt;
}

}  // namespace hullrider
