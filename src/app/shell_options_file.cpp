#include "app/shell_options_file.h"

#include <nlohmann/json.hpp>
#include <optional>

#include "platform/json.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

using Json = nlohmann::json;

constexpr int64_t kFarthestPixel = 100000;  // no desktop is larger

void Take(const Json& object, const char* key, int32_t& value) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_number_integer()) return;
    const auto pixels = found->get<int64_t>();
    if (pixels >= -kFarthestPixel && pixels <= kFarthestPixel) value = static_cast<int32_t>(pixels);
}

void Take(const Json& object, const char* key, bool& value) {
    const auto found = object.find(key);
    if (found != object.end() && found->is_boolean()) value = found->get<bool>();
}

}  // namespace

bool ReadShellOptions(std::string_view text, ShellOptions& options, std::string& error) {
    const std::optional<Json> read = ParseJsonObject(text, error);
    if (!read) return false;
    const Json& object = *read;
    Take(object, "x", options.x);
    Take(object, "y", options.y);
    Take(object, "width", options.width);
    Take(object, "height", options.height);
    Take(object, "maximized", options.isMaximized);
    Take(object, "closeToTray", options.closesToTray);
    Take(object, "equalLoudness", options.followsLoudness);
    return true;
}

std::string ShellOptionsText(const ShellOptions& options) {
    const Json object{{"x", options.x},
                      {"y", options.y},
                      {"width", options.width},
                      {"height", options.height},
                      {"maximized", options.isMaximized},
                      {"closeToTray", options.closesToTray},
                      {"equalLoudness", options.followsLoudness}};
    return object.dump(4) + '\n';
}

void LoadShellOptions(const std::string& path, ShellOptions& options) {
    LoadStateFile(path, {}, [&](std::string_view text, std::string& error) {
        return ReadShellOptions(text, options, error) ? StateReading::kWhole : StateReading::kUnreadable;
    });
}

bool SaveShellOptions(const std::string& path, const ShellOptions& options) {
    return SaveStateFile(path, ShellOptionsText(options));
}

}  // namespace hullrider
