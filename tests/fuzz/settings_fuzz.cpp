// The settings file's text: whatever was read, in part or whole, can be written and read again and is the same.
#include <cstdint>
#include <cstdlib>

#include "app/settings_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using hullrider::StateReading;
    const std::string text(data, data + size);
    hullrider::Settings settings;
    std::string error;
    if ((hullrider::ReadSettings(text, settings, error) == StateReading::kWhole) != error.empty()) std::abort();

    const std::string written = hullrider::SettingsText(settings);
    hullrider::Settings again;
    if (hullrider::ReadSettings(written, again, error) != StateReading::kWhole) std::abort();
    if (hullrider::SettingsText(again) != written) std::abort();
    return 0;
}
