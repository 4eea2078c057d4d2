#include "dialogs/number_rule.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace hullrider {

namespace {

std::string Trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    std::string trimmed(text);
    std::replace(trimmed.begin(), trimmed.end(), ',', '.');
    return trimmed;
}

std::optional<int32_t> Parsed(std::string_view text, int32_t perUnit) {
    const std::string trimmed = Trimmed(text);
    if (trimmed.find_first_not_of(perUnit == 1 ? "-0123456789" : "-.0123456789") != std::string::npos) return {};
    double number = 0.0;
    const char* const end = trimmed.data() + trimmed.size();
    const auto [stop, error] = std::from_chars(trimmed.data(), end, number);
    const double value = number * perUnit;
    if (error != std::errc() || stop != end || std::abs(value) > INT32_MAX) return {};
    return static_cast<int32_t>(std::lround(value));
}

// A bound needs no decimals.
std::string BoundText(int32_t value, int32_t perUnit) {
    return value % perUnit == 0 ? std::to_string(value / perUnit) : NumberText(value, perUnit);
}

}  // namespace

std::string NumberText(int32_t value, int32_t perUnit) {
    std::string text = std::to_string(value / perUnit);
    if (perUnit == 1) return text;
    if (value < 0 && value / perUnit == 0) text.insert(0, "-");
    std::string decimals = std::to_string(perUnit + std::abs(value % perUnit)).substr(1);
    while (decimals.size() > 1 && decimals.back() == '0') decimals.pop_back();
    return text + '.' + decimals;
}

std::optional<int32_t> ReadNumber(std::string_view text, const NumberRule& rule, std::string& remark) {
    const std::optional<int32_t> value = Parsed(text, rule.perUnit);
    const bool fits = value && *value >= rule.lowest && *value <= rule.highest;
    remark =
        fits ? "" : "From " + BoundText(rule.lowest, rule.perUnit) + " to " + BoundText(rule.highest, rule.perUnit);
    return fits ? value : std::nullopt;
}

int32_t SteppedNumber(int32_t value, int steps, const NumberRule& rule) {
    const int64_t stepped = int64_t{value} + int64_t{steps} * rule.step;
    return static_cast<int32_t>(std::clamp<int64_t>(stepped, rule.lowest, rule.highest));
}

}  // namespace hullrider
