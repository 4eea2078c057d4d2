// Numbers in state files. Internal to the room.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>

namespace hullrider {

// The value, or that of the object's key, as a number: at least 0 and within the type's range; 0 when it is missing or
// not a number.
int64_t CountOf(const nlohmann::json& value);
int64_t CountIn(const nlohmann::json& object, const char* key);
double SecondsIn(const nlohmann::json& object, const char* key);

}  // namespace hullrider
