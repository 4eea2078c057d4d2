#include "input/key_names.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace hullrider {

namespace {

struct NamedKey {
    int32_t vkKey;
    std::string_view name;
};

// Keys whose names do not follow from their codes.
constexpr std::array kNamedKeys{
    NamedKey{0x03, "Break"},
    NamedKey{0x08, "Backspace"},
    NamedKey{0x09, "Tab"},
    NamedKey{0x0C, "Num 5 (no lock)"},
    NamedKey{0x0D, "Enter"},
    NamedKey{0x13, "Pause"},
    NamedKey{0x14, "Caps Lock"},
    NamedKey{0x1B, "Escape"},
    NamedKey{0x20, "Space"},
    NamedKey{0x21, "Page Up"},
    NamedKey{0x22, "Page Down"},
    NamedKey{0x23, "End"},
    NamedKey{0x24, "Home"},
    NamedKey{0x25, "Left"},
    NamedKey{0x26, "Up"},
    NamedKey{0x27, "Right"},
    NamedKey{0x28, "Down"},
    NamedKey{0x2C, "Print Screen"},
    NamedKey{0x2D, "Insert"},
    NamedKey{0x2E, "Delete"},
    NamedKey{0x5F, "Sleep"},
    NamedKey{0x6A, "Num *"},
    NamedKey{0x6B, "Num +"},
    NamedKey{0x6C, "Num Separator"},
    NamedKey{0x6D, "Num -"},
    NamedKey{0x6E, "Num ."},
    NamedKey{0x6F, "Num /"},
    NamedKey{0x90, "Num Lock"},
    NamedKey{0x91, "Scroll Lock"},
    NamedKey{0xA6, "Browser Back"},
    NamedKey{0xA7, "Browser Forward"},
    NamedKey{0xA8, "Browser Refresh"},
    NamedKey{0xA9, "Browser Stop"},
    NamedKey{0xAA, "Browser Search"},
    NamedKey{0xAB, "Browser Favorites"},
    NamedKey{0xAC, "Browser Home"},
    NamedKey{0xAD, "Volume Mute"},
    NamedKey{0xAE, "Volume Down"},
    NamedKey{0xAF, "Volume Up"},
    NamedKey{0xB0, "Media Next"},
    NamedKey{0xB1, "Media Previous"},
    NamedKey{0xB2, "Media Stop"},
    NamedKey{0xB3, "Media Play/Pause"},
    NamedKey{0xB4, "Mail"},
    NamedKey{0xB5, "Media Select"},
    NamedKey{0xB6, "Application 1"},
    NamedKey{0xB7, "Application 2"},
    NamedKey{0xBA, ";"},
    NamedKey{0xBB, "="},
    NamedKey{0xBC, ","},
    NamedKey{0xBD, "-"},
    NamedKey{0xBE, "."},
    NamedKey{0xBF, "/"},
    NamedKey{0xC0, "`"},
    NamedKey{0xDB, "["},
    NamedKey{0xDC, "\\"},
    NamedKey{0xDD, "]"},
    NamedKey{0xDE, "'"},
    NamedKey{0xE2, "< (102nd key)"},
};

constexpr std::array<std::string_view, kControllerButtons> kButtonNames{"A",
                                                                        "B",
                                                                        "X",
                                                                        "Y",
                                                                        "Back",
                                                                        "Guide",
                                                                        "Start",
                                                                        "Left stick",
                                                                        "Right stick",
                                                                        "Left shoulder",
                                                                        "Right shoulder",
                                                                        "D-pad up",
                                                                        "D-pad down",
                                                                        "D-pad left",
                                                                        "D-pad right"};

constexpr std::array<std::string_view, kControllerTriggers> kTriggerNames{"Left trigger", "Right trigger"};

constexpr int32_t kF1 = 0x70, kF24 = 0x87, kNum0 = 0x60, kNum9 = 0x69;

bool IsWithin(int32_t value, int32_t lowest, int32_t highest) {
    return value >= lowest && value <= highest;
}

}  // namespace

std::string KeyName(int32_t vkKey) {
    if (IsWithin(vkKey, '0', '9') || IsWithin(vkKey, 'A', 'Z')) return {static_cast<char>(vkKey)};
    if (IsWithin(vkKey, kF1, kF24)) return "F" + std::to_string(vkKey - kF1 + 1);
    if (IsWithin(vkKey, kNum0, kNum9)) return "Num " + std::to_string(vkKey - kNum0);
    const auto* const found =
        std::find_if(kNamedKeys.begin(), kNamedKeys.end(), [vkKey](const NamedKey& key) { return key.vkKey == vkKey; });
    if (found != kNamedKeys.end()) return std::string(found->name);
    char text[24];
    std::snprintf(text, sizeof text, "Key 0x%02X", static_cast<unsigned>(vkKey));
    return text;
}

std::string KeyText(const HotkeyBinding& binding) {
    if (binding.vkKey == 0) return {};
    std::string text;
    if (binding.ctrl) text += "Ctrl+";
    if (binding.alt) text += "Alt+";
    if (binding.shift) text += "Shift+";
    return text + KeyName(binding.vkKey);
}

bool IsModifierKey(int32_t vkKey) {
    return IsWithin(vkKey, 0x10, 0x12) || IsWithin(vkKey, 0x5B, 0x5C) || IsWithin(vkKey, 0xA0, 0xA5);
}

bool IsTypingKey(int32_t vkKey) {
    constexpr std::array<int32_t, 10> kEditing{0x08, 0x09, 0x0D, 0x20, 0x25, 0x26, 0x27, 0x28, 0x2E, 0xE2};
    return IsWithin(vkKey, '0', '9') || IsWithin(vkKey, 'A', 'Z') || IsWithin(vkKey, kNum0, 0x6F) ||
           IsWithin(vkKey, 0xBA, 0xC0) || IsWithin(vkKey, 0xDB, 0xDE) ||
           std::find(kEditing.begin(), kEditing.end(), vkKey) != kEditing.end();
}

std::string ControllerButtonName(int32_t button) {
    if (IsWithin(button, 0, kControllerButtons - 1)) return std::string(kButtonNames[static_cast<size_t>(button)]);
    return "Button " + std::to_string(button);
}

std::string ControllerTriggerName(int32_t trigger) {
    if (IsWithin(trigger, 0, kControllerTriggers - 1)) return std::string(kTriggerNames[static_cast<size_t>(trigger)]);
    return "Trigger " + std::to_string(trigger);
}

}  // namespace hullrider
