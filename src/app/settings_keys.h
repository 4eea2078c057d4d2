// The keys of the settings file, in the order in which they are read and written, each with the field that it fills.
// One table serves loading and saving. Internal to the settings file.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "state/settings.h"

namespace hullrider {

// Numbers from a file are clamped to their range.
struct WholeNumberField {
    int32_t Settings::*member;
    int32_t lowest = std::numeric_limits<int32_t>::min();
    int32_t highest = std::numeric_limits<int32_t>::max();
};
struct NumberField {
    float Settings::*member;
    float lowest = std::numeric_limits<float>::lowest();
    float highest = std::numeric_limits<float>::max();
};
using FlagField = bool Settings::*;
using TextField = std::string Settings::*;
using TextListField = std::vector<std::string> Settings::*;

struct SettingsKey {
    std::string_view name;
    std::variant<WholeNumberField, NumberField, FlagField, TextField, TextListField> field;
};

// A missing required key ends the reading. The optional keys were added later, so older files lack them.
std::span<const SettingsKey> RequiredSettingsKeys();
std::span<const SettingsKey> OptionalSettingsKeys();

}  // namespace hullrider
