// Reading and writing the library's own state files, which are small JSON objects. Internal to the room.
#pragma once

#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace hullrider {

// The object that the text is, or a null value: `error` says why.
nlohmann::json ParseObject(std::string_view text, std::string& error);

// A number, or one of the object; 0 when it is missing or none. Put into the range of the type; never below 0.
int64_t CountOf(const nlohmann::json& value);
int64_t CountIn(const nlohmann::json& object, const char* key);
double SecondsIn(const nlohmann::json& object, const char* key);

// Hands the file's text to `read`. A missing file is no failure but yields false; one that `read` refuses, or that is
// larger than any that the player writes, is told on the error stream and kept as "PATH.bad".
bool LoadStateFile(const std::string& path, const std::function<bool(std::string_view, std::string&)>& read);

// False, with a line on the error stream, when that failed; the old file stays.
bool SaveStateFile(const std::string& path, std::string_view text);

}  // namespace hullrider
