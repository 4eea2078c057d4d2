// Hotkey Options: for each action a key that works in every program, and a button of a game controller. What is set
// here works at once and is kept only by "Save".
#include <algorithm>
#include <array>
#include <exception>

#include "dialogs/choice_win.h"
#include "dialogs/dialog_kinds_win.h"
#include "dialogs/hotkey_rows.h"
#include "dialogs/number_field_win.h"
#include "input/hotkey_file.h"
#include "input/key_names.h"
#include "platform/folder.h"
#include "platform/paths.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

constexpr char kWaiting[] = "Press a key...";
constexpr int kNobody = -1;

// Two columns of eleven actions each.
constexpr int kRows = kHotkeyActions / 2, kRow = 30, kTop = 52;
constexpr int kLabelWidth = 138, kFieldWidth = 150, kRemarkWidth = 174;
constexpr int kColumnWidth = kLabelWidth + kFieldWidth + kRemarkWidth + 2 * kGap;
constexpr int kWidth = 2 * kColumnWidth + 3 * kMargin;
constexpr int kHintTop = kTop + kRows * kRow + 4;
constexpr int kButtonTop = kHintTop + 74, kHeight = kButtonTop + kButtonHeight + kMargin;
constexpr int kButtonChoiceWidth = 116, kTriggerChoiceWidth = 104, kNumberWidth = 76;
constexpr int kLongestMs = 60000;

Place PlaceOf(int32_t action, int offset, int width, int height) {
    const int column = action / kRows, row = action % kRows;
    return {kMargin + column * (kColumnWidth + kMargin) + offset, kTop + row * kRow, width, height};
}

Place TextPlaceOf(int32_t action, int offset, int width) {
    Place place = PlaceOf(action, offset, width, kLineHeight);
    place.y += 3;
    return place;
}

bool IsHeld(int key) {
    return GetKeyState(key) < 0;
}

class HotkeyDialog : public Dialog {
public:
    explicit HotkeyDialog(SharedHost host) : host_(std::move(host)) {}

protected:
    Size ClientSize() const override { return {kWidth, kHeight}; }

    void AddControls() override {
        tabs_ = AddTabs({kMargin, kMargin, kWidth - 2 * kMargin, 26}, {"Key Board", "Game Controller"},
                        [this](int tab) { ShowTab(tab); });
        pageBegins_[0] = ControlCount();
        AddKeys();
        pageBegins_[1] = ControlCount();
        AddController();
        pageBegins_[2] = ControlCount();
        AddButtons();
        saved_ = SavedBindings();
        ShowTab(0);
    }

    void Refresh() override {
        for (int32_t action = 0; action < kHotkeyActions; ++action) ShowAction(action);
        for (const NumberField& field : fields_) field.Show();
        SetChecked(rumble_, Settings_().useRumble != 0);
        SetChecked(toggleRumble_, Settings_().useRumbleToggle != 0);
        SetChecked(latch_, Settings_().toggleLatchMode);
        ShowStatus();
    }

    bool OnKey(WPARAM key) override {
        if (waiting_ != kNobody) {
            if (!KeyIsRepeated()) TakeKey(static_cast<int32_t>(key));
            return true;
        }
        if (key == VK_TAB && IsHeld(VK_CONTROL)) {
            SendMessageW(tabs_, TCM_SETCURSEL, static_cast<WPARAM>(1 - tab_), 0);
            ShowTab(1 - tab_);
            return true;
        }
        const auto field = std::find(keys_.begin(), keys_.end(), GetFocus());
        if (key != VK_RETURN || field == keys_.end() || KeyIsRepeated()) return false;
        WaitForKey(static_cast<int32_t>(field - keys_.begin()));
        return true;
    }

    void OnClose() override { StopWaiting(); }

private:
    Settings& Settings_() const { return host_->state.settings; }
    std::string FilePath() const { return StatePath(host_->state.shell.dataDirectory, kHotkeysFile); }

    void AddKeys() {
        for (int32_t action = 0; action < kHotkeyActions; ++action) {
            const auto at = static_cast<size_t>(action);
            AddLabel(TextPlaceOf(action, 0, kLabelWidth), HotkeyLabel(action));
            keys_[at] = AddFieldButton(
                PlaceOf(action, kLabelWidth, kFieldWidth, kFieldHeight), "",
                [this, action] { action == waiting_ ? StopWaiting() : WaitForKey(action); }, [this] { StopWaiting(); });
            if (action >= kActionsWithKeys) EnableWindow(keys_[at], FALSE);
            keyRemarks_[at] =
                AddLabel(TextPlaceOf(action, kLabelWidth + kFieldWidth + kGap, kRemarkWidth), "", kOneLine);
        }
        AddLabel(
            {kMargin, kHintTop + 8, kWidth - 2 * kMargin, 2 * kLineHeight},
            "Click a field and press a key, with Ctrl, Alt or Shift if you like: it then works in every program. "
            "Delete clears the field, Escape leaves it as it is. Ctrl+Shift+J and the media keys work without being "
            "set here.");
    }

    void AddController() {
        for (int32_t action = 0; action < kHotkeyActions; ++action) {
            const auto at = static_cast<size_t>(action);
            AddLabel(TextPlaceOf(action, 0, kLabelWidth), HotkeyLabel(action));
            buttons_[at] = AddChoice(PlaceOf(action, kLabelWidth, kButtonChoiceWidth, kFieldHeight),
                                     [this, action] { TakeController(action); });
            AddToChoice(buttons_[at], "No button", -1);
            for (int32_t i = 0; i < kControllerButtons; ++i) AddToChoice(buttons_[at], ControllerButtonName(i), i);
            triggers_[at] =
                AddChoice(PlaceOf(action, kLabelWidth + kButtonChoiceWidth + kGap, kTriggerChoiceWidth, kFieldHeight),
                          [this, action] { TakeController(action); });
            AddToChoice(triggers_[at], "No trigger", -1);
            for (int32_t i = 0; i < kControllerTriggers; ++i) AddToChoice(triggers_[at], ControllerTriggerName(i), i);
            constexpr int kRemarkLeft = kLabelWidth + kButtonChoiceWidth + kTriggerChoiceWidth + 2 * kGap;
            controllerRemarks_[at] =
                AddLabel(TextPlaceOf(action, kRemarkLeft, kColumnWidth - kRemarkLeft), "", kOneLine);
        }
        AddRumble();
    }

    // Two lines of settings, in step with the columns above.
    void AddRumble() {
        constexpr int kFirst = kHintTop + 4, kSecond = kFirst + kRow, kLeft = kMargin,
                      kRight = kColumnWidth + 2 * kMargin;
        rumble_ = AddCheckBox({kLeft, kFirst + 2, kLabelWidth, kLineHeight}, "&Button rumble", false,
                              [this] { Take(Settings_().useRumble, IsChecked(rumble_) ? 1 : 0); });
        AddMilliseconds(kLeft + kLabelWidth, kFirst, &Settings::rumbleTime);
        toggleRumble_ = AddCheckBox({kRight, kFirst + 2, kLabelWidth, kLineHeight}, "&Toggle rumble", false,
                                    [this] { Take(Settings_().useRumbleToggle, IsChecked(toggleRumble_) ? 1 : 0); });
        AddMilliseconds(kRight + kLabelWidth, kFirst, &Settings::rumbleTimeToggle);
        latch_ = AddCheckBox({kLeft, kSecond + 2, kLabelWidth, kLineHeight}, "&Latch, after holding", false,
                             [this] { Take(Settings_().toggleLatchMode, IsChecked(latch_)); });
        AddMilliseconds(kLeft + kLabelWidth, kSecond, &Settings::toggleLatchDurationMs);
        AddLabel({kRight, kSecond + 3, kLabelWidth, kLineHeight}, "Latch st&ays active");
        AddMilliseconds(kRight + kLabelWidth, kSecond, &Settings::toggleLatchActiveTimeMs);
    }

    void AddMilliseconds(int x, int y, int32_t Settings::*setting) {
        const size_t at = fields_.size();
        const NumberControls controls = AddNumber(
            {x, y, kNumberWidth, kFieldHeight}, 0, kLongestMs, [this, at] { fields_[at].OnChange(); },
            [this, at] { fields_[at].OnLeave(); });
        AddLabel({x + kNumberWidth + kGap, y + 3, 78, kLineHeight}, "milliseconds");
        const HWND remark = AddLabel({x + kNumberWidth + 86 + kGap, y + 3, 120, kLineHeight}, "");
        fields_.push_back(NumberField(controls, remark,
                                      {0, kLongestMs, [this, setting] { return Settings_().*setting; },
                                       [this, setting](int32_t value) { Take(Settings_().*setting, value); }}));
    }

    void AddButtons() {
        constexpr int kStep = kButtonWidth + kGap;
        AddButton({kMargin, kButtonTop, kButtonWidth, kButtonHeight}, "&Save", [this] { Save(); });
        AddButton({kMargin + kStep, kButtonTop, kButtonWidth, kButtonHeight}, "&Reload", [this] { Reload(); });
        AddButton({kMargin + 2 * kStep, kButtonTop, kButtonWidth, kButtonHeight}, "Cl&ear All", [this] { ClearAll(); });
        constexpr int kStatusLeft = kMargin + 3 * kStep, kCloseLeft = kWidth - kMargin - kButtonWidth;
        status_ = AddLabel({kStatusLeft, kButtonTop + 5, kCloseLeft - kStatusLeft - kGap, kLineHeight}, "", kOneLine);
        AddButton({kCloseLeft, kButtonTop, kButtonWidth, kButtonHeight}, "&Close",
                  [this] { PostMessageW(Window(), WM_CLOSE, 0, 0); });
    }

    void ShowTab(int tab) {
        tab_ = tab;
        const HWND focus = GetFocus();
        ShowControls(pageBegins_[0], pageBegins_[1], tab == 0);
        ShowControls(pageBegins_[1], pageBegins_[2], tab == 1);
        // The keyboard must not be lost with the page.
        if (IsChild(Window(), focus) != 0 && IsWindowVisible(focus) == 0) SetFocus(tabs_);
    }

    void ShowAction(int32_t action) const {
        const auto at = static_cast<size_t>(action);
        const HotkeyBindings& bindings = host_->hotkeys;
        SetText(keys_[at], action == waiting_ ? kWaiting : KeyFieldText(bindings, action));
        SetText(keyRemarks_[at], action == waiting_ ? "" : KeyRemark(bindings, host_->refusedHotkeys, action));
        const HotkeyBinding binding = BindingOf(bindings, action);
        if (SendMessageW(buttons_[at], CB_GETDROPPEDSTATE, 0, 0) == 0) {
            Choose(buttons_[at], std::max(binding.gameControllerButton, -1), ControllerButtonName);
        }
        if (SendMessageW(triggers_[at], CB_GETDROPPEDSTATE, 0, 0) == 0) {
            Choose(triggers_[at], std::max(binding.gameControllerTrigger, -1), ControllerTriggerName);
        }
        SetText(controllerRemarks_[at], ControllerRemark(bindings, action));
    }

    void ShowStatus() const {
        const bool isSaved = HaveSameBindings(saved_, host_->hotkeys);
        SetText(status_, !trouble_.empty() ? trouble_
                         : isSaved         ? ""
                                           : "In force, but not saved yet: forgotten when the player ends.");
    }

    // None of the system's hotkeys is there while a field waits, so that all keys come here.
    void WaitForKey(int32_t action) {
        StopWaiting();
        waiting_ = action;
        host_->releaseHotkeys();
        Refresh();
    }

    void StopWaiting() {
        if (waiting_ == kNobody) return;
        waiting_ = kNobody;
        host_->takeHotkeys();
        Refresh();
    }

    void TakeKey(int32_t key) {
        const HotkeyBinding pressed{key, IsHeld(VK_CONTROL), IsHeld(VK_MENU), IsHeld(VK_SHIFT)};
        if (!TakePressedKey(BindingToChange(host_->hotkeys, waiting_), pressed)) return;
        trouble_.clear();
        StopWaiting();
    }

    void TakeController(int32_t action) {
        HotkeyBinding& binding = BindingToChange(host_->hotkeys, action);
        binding.gameControllerButton = ChosenIn(buttons_[static_cast<size_t>(action)]);
        binding.gameControllerTrigger = ChosenIn(triggers_[static_cast<size_t>(action)]);
        trouble_.clear();
        Refresh();
    }

    template <typename Value>
    void Take(Value& setting, Value value) {
        setting = value;
    }

    void Save() {
        const bool isSaved = SaveHotkeyConfig(FilePath(), host_->hotkeys);
        trouble_ = isSaved ? "" : "Could not be saved: " + FilePath();
        if (isSaved) saved_ = host_->hotkeys;
        ShowStatus();
    }

    void Reload() {
        HotkeyBindings loaded;
        if (!Load(loaded)) return ShowStatus();
        saved_ = loaded;
        host_->hotkeys = loaded;
        host_->takeHotkeys();
        Refresh();
    }

    // False, with the trouble to show, when there are no bindings to be had from the file.
    bool Load(HotkeyBindings& loaded) {
        trouble_.clear();
        try {
            if (!LoadHotkeyConfig(FilePath(), loaded)) trouble_ = "Nothing has been saved yet.";
        } catch (const std::exception&) {
            trouble_ = "The file cannot be understood: " + FilePath();
        }
        return trouble_.empty();
    }

    HotkeyBindings SavedBindings() {
        HotkeyBindings loaded;
        const bool isLoaded = IsFile(FilePath()) && Load(loaded);
        return isLoaded ? loaded : BuiltInHotkeys();
    }

    void ClearAll() {
        trouble_.clear();
        if (tab_ == 0) {
            ClearKeys(host_->hotkeys);
        } else {
            ClearControllers(host_->hotkeys);
        }
        host_->takeHotkeys();
        Refresh();
    }

    SharedHost host_;
    HotkeyBindings saved_;  // as in the file
    std::string trouble_;
    int32_t waiting_ = kNobody;  // the action whose field waits for a key
    int tab_ = 0;
    std::array<size_t, 3> pageBegins_{};  // the controls of the pages, and the end of the last one
    std::array<HWND, kHotkeyActions> keys_{}, keyRemarks_{}, buttons_{}, triggers_{}, controllerRemarks_{};
    std::vector<NumberField> fields_;
    HWND tabs_ = nullptr, rumble_ = nullptr, toggleRumble_ = nullptr, latch_ = nullptr, status_ = nullptr;
};

}  // namespace

std::unique_ptr<Dialog> MakeHotkeyDialog(const SharedHost& host) {
    return std::make_unique<HotkeyDialog>(host);
}

}  // namespace hullrider
