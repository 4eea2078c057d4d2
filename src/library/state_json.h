// Numbers out of state files. Internal to the room.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>

namespace hullrider {

// A number, or one of the object; 0 when it is missing or none. Put into the range of the type; never below 0.
int64_t CountOf(const nlohmann::json& value);
int64_t CountIn(const nlohmann::json& object, const char* key);
double SecondsIn(const nlohmann::json& object, const char* key);

}  // namespace hullrider
