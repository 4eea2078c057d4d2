#include "dialogs/hotkey_rows.h"

#include <algorithm>
#include <optional>

#include "input/key_names.h"

namespace hullrider {

namespace {

constexpr int32_t kBackspace = 0x08, kEscape = 0x1B, kDelete = 0x2E;

// VK_PROCESSKEY (text input), VK_PACKET (a character), and a key without a code.
bool IsNoKey(int32_t key) {
    return key == 0xE5 || key == 0xE7 || key == 0xFF;
}

// The label without its colon, for use within a sentence.
std::string NameOf(int32_t action) {
    std::string name(HotkeyLabel(action));
    if (name.ends_with(':')) name.pop_back();
    return name;
}

bool IsSameKey(const HotkeyBinding& one, const HotkeyBinding& other) {
    return one.vkKey == other.vkKey && one.ctrl == other.ctrl && one.alt == other.alt && one.shift == other.shift;
}

// The first other action below `end` whose binding is `alike`.
template <typename Alike>
std::optional<int32_t> OtherAction(const HotkeyBindings& bindings, int32_t action, int32_t end, Alike alike) {
    const HotkeyBinding own = BindingOf(bindings, action);
    for (int32_t other = 0; other < end; ++other) {
        if (other != action && alike(own, BindingOf(bindings, other))) return other;
    }
    return std::nullopt;
}

// The action of the built-in key that this binding would replace.
std::optional<int32_t> FixedAction(const HotkeyBinding& binding) {
    HotkeyBindings alone(1, binding);
    const std::vector<Hotkey> hotkeys = HotkeysToRegister(alone);
    constexpr uint32_t kModifiers = 7;
    for (const Hotkey& fixed : hotkeys) {
        const bool isSame =
            fixed.vkKey == binding.vkKey && (fixed.modifiers & kModifiers) == (hotkeys.front().modifiers & kModifiers);
        if (fixed.action >= kShowPlayerKey && isSame) return fixed.action;
    }
    return std::nullopt;
}

bool IsRefused(const std::vector<RefusedHotkey>& refused, int32_t action) {
    return std::any_of(refused.begin(), refused.end(),
                       [action](const RefusedHotkey& one) { return one.hotkey.action == action; });
}

}  // namespace

HotkeyBinding BindingOf(const HotkeyBindings& bindings, int32_t action) {
    const auto at = static_cast<size_t>(action);
    return at < bindings.size() ? bindings[at] : HotkeyBinding();
}

HotkeyBinding& BindingToChange(HotkeyBindings& bindings, int32_t action) {
    const auto at = static_cast<size_t>(action);
    if (at >= bindings.size()) bindings.resize(at + 1);
    return bindings[at];
}

std::string KeyFieldText(const HotkeyBindings& bindings, int32_t action) {
    const std::string text = KeyText(BindingOf(bindings, action));
    return text.empty() ? "None" : text;
}

std::string KeyRemark(const HotkeyBindings& bindings, const std::vector<RefusedHotkey>& refused, int32_t action) {
    const HotkeyBinding binding = BindingOf(bindings, action);
    if (binding.vkKey == 0) return {};
    if (const auto other = OtherAction(bindings, action, kActionsWithKeys, IsSameKey)) return "Also " + NameOf(*other);
    if (const auto fixed = FixedAction(binding)) {
        return *fixed == kShowPlayerKey ? "No longer shows the player" : "No longer a media key";
    }
    if (IsRefused(refused, action)) return "Taken by another program";
    if (!binding.ctrl && !binding.alt && IsTypingKey(binding.vkKey)) return "Will no longer reach other programs";
    return {};
}

std::string ControllerRemark(const HotkeyBindings& bindings, int32_t action) {
    const auto other = OtherAction(bindings, action, kHotkeyActions, [](const auto& one, const auto& another) {
        const bool sameButton =
            one.gameControllerButton >= 0 && one.gameControllerButton == another.gameControllerButton;
        const bool sameTrigger =
            one.gameControllerTrigger >= 0 && one.gameControllerTrigger == another.gameControllerTrigger;
        return sameButton || sameTrigger;
    });
    return other ? "Also " + NameOf(*other) : std::string();
}

bool TakePressedKey(HotkeyBinding& binding, const HotkeyBinding& pressed) {
    if (IsModifierKey(pressed.vkKey) || IsNoKey(pressed.vkKey)) return false;
    const bool isAlone = !pressed.ctrl && !pressed.alt && !pressed.shift;
    if (isAlone && pressed.vkKey == kEscape) return true;
    const bool clears = isAlone && (pressed.vkKey == kDelete || pressed.vkKey == kBackspace);
    const HotkeyBinding taken = clears ? HotkeyBinding() : pressed;
    binding.vkKey = taken.vkKey;
    binding.ctrl = taken.ctrl;
    binding.alt = taken.alt;
    binding.shift = taken.shift;
    return true;
}

bool HaveSameBindings(const HotkeyBindings& one, const HotkeyBindings& other) {
    for (int32_t action = 0; action < kHotkeyActions; ++action) {
        if (BindingOf(one, action) != BindingOf(other, action)) return false;
    }
    return true;
}

void ClearKeys(HotkeyBindings& bindings) {
    for (HotkeyBinding& binding : bindings) {
        binding.vkKey = 0;
        binding.ctrl = binding.alt = binding.shift = false;
    }
}

void ClearControllers(HotkeyBindings& bindings) {
    for (HotkeyBinding& binding : bindings) binding.gameControllerButton = binding.gameControllerTrigger = -1;
}

}  // namespace hullrider
