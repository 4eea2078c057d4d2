#include "input/hotkey_file.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>

#include "platform/console.h"
#include "platform/files.h"
#include "platform/folder.h"
#include "platform/json.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

using Json = nlohmann::json;

// A number's whole part, clamped to 32 bits; a boolean is 0 or 1.
int32_t NumberIn(const Json& element, const char* key) {
    const Json& value = element.at(key);
    if (value.is_boolean()) return value.get<bool>() ? 1 : 0;
    constexpr double kLowest = std::numeric_limits<int32_t>::min();
    constexpr double kHighest = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(std::clamp(value.get<double>(), kLowest, kHighest));
}

HotkeyBinding BindingFrom(const Json& element) {
    HotkeyBinding binding;
    binding.vkKey = NumberIn(element, "vkKey");
    binding.ctrl = element.at("ctrl").get<bool>();
    binding.alt = element.at("alt").get<bool>();
    binding.shift = element.at("shift").get<bool>();
    binding.gameControllerButton = NumberIn(element, "gameControllerButton");
    binding.gameControllerTrigger = NumberIn(element, "gameControllerTrigger");
    return binding;
}

// True when the file exists, good or bad.
bool LoadOrMend(const std::string& path, HotkeyBindings& bindings) {
    try {
        return LoadHotkeyConfig(path, bindings);
    } catch (const std::exception& error) {
        PrintErrorLine("Failed to read " + path + ": " + JsonErrorText(error));
    }
    KeepBadFile(path);
    const HotkeyBindings builtIn = BuiltInHotkeys();
    if (bindings.size() < builtIn.size()) {
        bindings.insert(bindings.end(), builtIn.begin() + static_cast<ptrdiff_t>(bindings.size()), builtIn.end());
    }
    return true;
}

}  // namespace

void ReadHotkeyConfig(std::string_view text, HotkeyBindings& bindings) {
    std::string error;
    const std::optional<Json> list = ParseJson(text, error);
    if (!list) throw std::runtime_error(error);
    const auto& elements = list->get_ref<const Json::array_t&>();
    bindings.clear();
    for (const Json& element : elements) bindings.push_back(BindingFrom(element));
}

std::string HotkeyConfigText(const HotkeyBindings& bindings) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const HotkeyBinding& binding : bindings) {
        list.push_back({{"vkKey", binding.vkKey},
                        {"ctrl", binding.ctrl},
                        {"alt", binding.alt},
                        {"shift", binding.shift},
                        {"gameControllerButton", binding.gameControllerButton},
                        {"gameControllerTrigger", binding.gameControllerTrigger}});
    }
    return list.dump(4) + "\n";
}

bool LoadHotkeyConfig(const std::string& path, HotkeyBindings& bindings) {
    std::string error;
    const std::optional<std::string> text = ReadStateFile(path, kMostStateBytes, error);
    if (!text) {
        PrintErrorLine("Unable to open file for reading: " + path + (error.empty() ? "" : ": " + error));
        return false;
    }
    ReadHotkeyConfig(*text, bindings);
    return true;
}

bool SaveHotkeyConfig(const std::string& path, const HotkeyBindings& bindings) {
    return SaveStateFile(path, HotkeyConfigText(bindings), "Unable to open file for writing: " + path);
}

void LoadHotkeyFiles(const std::string& ownPath, HotkeyBindings& bindings) {
    if (LoadOrMend(ownPath, bindings)) return;
    if (IsFile(ownPath)) KeepBadFile(ownPath);
    LoadOrMend(kHotkeysFile, bindings);
}

}  // namespace hullrider
