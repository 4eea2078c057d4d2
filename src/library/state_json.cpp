#include "library/state_json.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace hullrider {

namespace {

constexpr double kMostSeconds = 1e15;

using Json = nlohmann::json;

}  // namespace

int64_t CountOf(const Json& value) {
    if (!value.is_number_integer()) return 0;
    if (!value.is_number_unsigned()) return std::max<int64_t>(value.get<int64_t>(), 0);
    return static_cast<int64_t>(
        std::min(value.get<uint64_t>(), static_cast<uint64_t>(std::numeric_limits<int64_t>::max())));
}

int64_t CountIn(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() ? 0 : CountOf(*found);
}

double SecondsIn(const Json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_number()) return 0.0;
    const auto seconds = found->get<double>();
    return std::isfinite(seconds) ? std::clamp(seconds, 0.0, kMostSeconds) : 0.0;
}

}  // namespace hullrider
