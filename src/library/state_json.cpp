#include "library/state_json.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "platform/console.h"
#include "platform/files.h"
#include "platform/folder.h"

namespace hullrider {

namespace {

constexpr size_t kMaxStateBytes = size_t{64} << 20;
constexpr size_t kMaxErrorBytes = 1000;  // the parser quotes what it stumbled over, however long that is
constexpr double kMostSeconds = 1e15;

using Json = nlohmann::json;

}  // namespace

Json ParseObject(std::string_view text, std::string& error) {
    try {
        Json object = Json::parse(text);
        if (object.is_object()) return object;
        error = "it holds no object";
    } catch (const Json::exception& exception) {
        error = std::string(exception.what()).substr(0, kMaxErrorBytes);
    }
    return {};
}

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

bool LoadStateFile(const std::string& path, const std::function<bool(std::string_view, std::string&)>& read) {
    if (!IsFile(path)) return false;
    const std::optional<std::string> text = ReadStateFile(path, kMaxStateBytes);
    std::string error = "it cannot be read";
    if (text && read(*text, error)) return true;
    PrintErrorLine("Failed to read " + path + ": " + error);
    KeepBadFile(path);
    return false;
}

bool SaveStateFile(const std::string& path, std::string_view text) {
    if (WriteWholeFile(path, text)) return true;
    PrintErrorLine("Failed to open file for writing: " + path);
    return false;
}

}  // namespace hullrider
