#include "app/settings_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "app/settings_keys.h"
#include "platform/json.h"

namespace hullrider {

namespace {

using Json = nlohmann::json;

// Stores a value in its field. False when it has the wrong JSON type or is a number that the field cannot hold.
struct Taking {
    const Json& value;
    Settings& settings;

    bool operator()(const WholeNumberField& field) const {
        if (!value.is_number_integer()) return false;
        const bool fits = value.is_number_unsigned() ? std::in_range<int32_t>(value.get<uint64_t>())
                                                     : std::in_range<int32_t>(value.get<int64_t>());
        if (fits) settings.*field.member = std::clamp(value.get<int32_t>(), field.lowest, field.highest);
        return fits;
    }

    bool operator()(const NumberField& field) const {
        if (!value.is_number()) return false;
        const double number = value.get<double>();
        const bool fits = std::abs(number) <= std::numeric_limits<float>::max();
        if (fits) settings.*field.member = std::clamp(static_cast<float>(number), field.lowest, field.highest);
        return fits;
    }

    bool operator()(FlagField field) const {
        if (value.is_boolean()) settings.*field = value.get<bool>();
        return value.is_boolean();
    }

    bool operator()(TextField field) const {
        if (value.is_string()) settings.*field = value.get<std::string>();
        return value.is_string();
    }

    bool operator()(TextListField field) const {
        const auto isText = [](const Json& element) { return element.is_string(); };
        if (!value.is_array() || !std::all_of(value.begin(), value.end(), isText)) return false;
        settings.*field = value.get<std::vector<std::string>>();
        return true;
    }
};

// The shortest decimal number that reads back as this float: 0.1, not 0.10000000149011612.
double ShortestDouble(float value) {
    std::array<char, 32> digits{};
    const std::to_chars_result written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    double number = 0.0;
    std::from_chars(digits.data(), written.ptr, number);
    return number;
}

struct Giving {
    const Settings& settings;

    nlohmann::ordered_json operator()(const WholeNumberField& field) const { return settings.*field.member; }
    nlohmann::ordered_json operator()(const NumberField& field) const {
        const float value = settings.*field.member;
        // JSON has no infinity: it would be written as null, which would end the next reading.
        return ShortestDouble(std::isfinite(value) ? value : Settings{}.*field.member);
    }
    nlohmann::ordered_json operator()(FlagField field) const { return settings.*field; }
    nlohmann::ordered_json operator()(TextField field) const { return settings.*field; }
    nlohmann::ordered_json operator()(TextListField field) const { return settings.*field; }
};

enum class Taken { kYes, kMissing, kWrongType };

Taken Take(const Json& object, const SettingsKey& key, Settings& settings) {
    const auto found = object.find(key.name);
    if (found == object.end()) return Taken::kMissing;
    return std::visit(Taking{*found, settings}, key.field) ? Taken::kYes : Taken::kWrongType;
}

std::string Complaint(const SettingsKey& key, Taken taken) {
    return std::string(key.name) + (taken == Taken::kMissing ? " is missing" : " has a value of the wrong type");
}

StateReading TakeAll(const Json& object, Settings& settings, std::string& error) {
    for (const SettingsKey& key : RequiredSettingsKeys()) {
        const Taken taken = Take(object, key, settings);
        if (taken == Taken::kYes) continue;
        error = Complaint(key, taken) + ", the settings after it keep their built-in values";
        return StateReading::kPartly;
    }
    for (const SettingsKey& key : OptionalSettingsKeys()) {
        const Taken taken = Take(object, key, settings);
        if (taken == Taken::kWrongType) error = Complaint(key, taken) + ", it keeps its built-in value";
    }
    return error.empty() ? StateReading::kWhole : StateReading::kPartly;
}

}  // namespace

StateReading ReadSettings(std::string_view text, Settings& settings, std::string& error) {
    settings = {};
    error.clear();
    const std::optional<Json> object = ParseJsonObject(text, error);
    return object ? TakeAll(*object, settings, error) : StateReading::kUnreadable;
}

std::string SettingsText(const Settings& settings) {
    nlohmann::ordered_json object;  // the file keeps the order of the table
    const auto give = [&](const SettingsKey& key) {
        object[std::string(key.name)] = std::visit(Giving{settings}, key.field);
    };
    std::ranges::for_each(RequiredSettingsKeys(), give);
    std::ranges::for_each(OptionalSettingsKeys(), give);
    return object.dump(4, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

StateReading LoadSettings(const std::string& path, Settings& settings) {
    settings = {};
    const auto read = [&](std::string_view text, std::string& error) { return ReadSettings(text, settings, error); };
    return LoadStateFile(path, "Failed to open file for reading: " + path, read);
}

bool SaveSettings(const std::string& path, const Settings& settings) {
    return SaveStateFile(path, SettingsText(settings));
}

}  // namespace hullrider
