// Hotkey Options: for each action a key that works in every program, and a button of a game controller. Changes work at
// once but are saved only by "Save", or when the user agrees to it on closing the window.
#include <algorithm>
#include <array>
#include <exception>

#include "dialogs/choice_win.h"
#include "dialogs/hotkey_rows.h"
#include "dialogs/number_field_win.h"
#include "dialogs/option_windows_win.h"
#include "input/hotkey_file.h"
#include "input/key_names.h"
#include "platform/folder.h"

namespace hullrider {

namespace {

constexpr char kWaiting[] = "Press a key...";
constexpr int kNobody = -1;

constexpr NumberRule kShortTime{0, 60000, 1000, 100};  // in milliseconds, shown as seconds
constexpr int kHintWidth = 760;
constexpr char kKeyHint[] =
    "Click a field and press a key, alone or with Ctrl, Alt or Shift: it then works in every program. Delete clears "
    "the field, Escape leaves it unchanged. Ctrl+Shift+J and the media keys are built in.";

bool IsHeld(int key) {
    return GetKeyState(key) < 0;
}

class HotkeyDialog : public Dialog {
public:
    explicit HotkeyDialog(HotkeyPorts ports) : ports_(std::move(ports)) {}

protected:
    Form MakeForm() override {
        tabs_ = AddTabs({"Key Board", "Game Controller"}, [this](int tab) { ShowTab(tab); });
        pageBegins_[0] = ControlCount();
        Form keys = AddKeys();
        pageBegins_[1] = ControlCount();
        Form controller = AddController();
        pageBegins_[2] = ControlCount();
        Form buttons = AddButtons();
        saved_ = SavedBindings();
        opened_ = ports_.bindings;
        ShowTab(0);
        return WithGap(kMargin, Column({tabs_, Stack({keys, controller}), buttons}));
    }

    void Refresh() override {
        for (int32_t action = 0; action < kHotkeyActions; ++action) ShowController(action);
        for (int32_t action = 0; action < kActionsWithKeys; ++action) ShowKey(action);
        for (NumberField& field : fields_) field.Show();
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

    bool MayClose() override {
        StopWaiting();
        if (IsSaved() || HaveSameBindings(opened_, ports_.bindings)) return true;
        switch (Ask("Save the changed hotkeys? Otherwise they are lost when the player ends.")) {
            case Answer::kYes:
                Save();
                return IsSaved();
            case Answer::kNo:
                return true;
            default:
                return false;
        }
    }

    void OnClose() override { StopWaiting(); }

private:
    Settings& Settings_() const { return ports_.settings; }

    // The rows of the first `count` actions, in two grids side by side.
    template <typename AddRow>
    Form AddActions(int32_t count, size_t columns, const AddRow& addRow) {
        std::vector<Form> left, right;
        for (int32_t action = 0; action < count; ++action) addRow(action, action < count / 2 ? left : right);
        AlignWidths(labels_);
        labels_.clear();
        return WithGap(2 * kMargin,
                       Row({WithGap(6, Grid(columns, std::move(left))), WithGap(6, Grid(columns, std::move(right)))}));
    }

    void AddActionLabel(int32_t action, std::vector<Form>& grid) {
        labels_.push_back(AddLabel(HotkeyLabel(action)));
        grid.push_back(labels_.back());
    }

    Form AddKeys() {
        Form actions = AddActions(kActionsWithKeys, 3, [this](int32_t action, std::vector<Form>& grid) {
            AddActionLabel(action, grid);
            const auto at = static_cast<size_t>(action);
            keys_[at] = AddFieldButton(
                "Ctrl+Alt+Shift+Num 0", [this, action] { action == waiting_ ? StopWaiting() : WaitForKey(action); },
                [this] { StopWaiting(); });
            keyRemarks_[at] = AddLine("Will no longer reach other programs");
            grid.insert(grid.end(), {keys_[at], keyRemarks_[at]});
        });
        return Column({actions, AddParagraph(kKeyHint, kHintWidth)});
    }

    Form AddController() {
        Form actions = AddActions(kHotkeyActions, 4, [this](int32_t action, std::vector<Form>& grid) {
            AddActionLabel(action, grid);
            const auto at = static_cast<size_t>(action);
            buttons_[at] = AddChoice("Right shoulder", [this, action] { TakeController(action); });
            AddToChoice(buttons_[at], "No button", -1);
            for (int32_t i = 0; i < kControllerButtons; ++i) AddToChoice(buttons_[at], ControllerButtonName(i), i);
            triggers_[at] = AddChoice("Right trigger", [this, action] { TakeController(action); });
            AddToChoice(triggers_[at], "No trigger", -1);
            for (int32_t i = 0; i < kControllerTriggers; ++i) AddToChoice(triggers_[at], ControllerTriggerName(i), i);
            controllerRemarks_[at] = AddLine("Also Volume Toggle");
            grid.insert(grid.end(), {buttons_[at], triggers_[at], controllerRemarks_[at]});
        });
        return WithGap(kMargin, Column({actions, AddRumble()}));
    }

    Form AddRumble() {
        std::vector<Form> grid;
        rumble_ =
            AddCheckBox("&Button rumble", false, [this] { Take(Settings_().useRumble, IsChecked(rumble_) ? 1 : 0); });
        AddSeconds(grid, rumble_, &Settings::rumbleTime);
        toggleRumble_ = AddCheckBox("&Toggle rumble", false,
                                    [this] { Take(Settings_().useRumbleToggle, IsChecked(toggleRumble_) ? 1 : 0); });
        AddSeconds(grid, toggleRumble_, &Settings::rumbleTimeToggle);
        latch_ = AddCheckBox("&Latch, after holding", false,
                             [this] { Take(Settings_().toggleLatchMode, IsChecked(latch_)); });
        AddSeconds(grid, latch_, &Settings::toggleLatchDurationMs);
        AddSeconds(grid, AddLabel("Latch st&ays active"), &Settings::toggleLatchActiveTimeMs);
        return Grid(8, std::move(grid));
    }

    void AddSeconds(std::vector<Form>& grid, HWND label, int32_t Settings::*setting) {
        const size_t at = fields_.size();
        const NumberControls controls =
            AddNumber([this, at] { fields_[at].OnChange(); }, [this, at] { fields_[at].OnLeave(); },
                      [this, at](int steps) { fields_[at].OnArrow(steps); });
        const HWND unit = AddLabel("seconds");
        const HWND remark = AddLine("From 0 to 60");
        grid.insert(grid.end(), {label, controls.Together(), unit, remark});
        fields_.push_back(NumberField(controls, remark,
                                      {kShortTime,
                                       [this, setting] { return Settings_().*setting; },
                                       [this, setting](int32_t value) { Take(Settings_().*setting, value); },
                                       {},
                                       {}}));
    }

    Form AddButtons() {
        const HWND save = AddButton("&Save", [this] { Save(); });
        const HWND reload = AddButton("&Reload", [this] { Reload(); });
        const HWND clear = AddButton("Cl&ear All", [this] { ClearAll(); });
        status_ = AddLine();
        return Row({save, reload, clear, GrowWide(status_), AddCloseButton()});
    }

    void ShowTab(int tab) {
        tab_ = tab;
        const HWND focus = GetFocus();
        ShowControls(pageBegins_[0], pageBegins_[1], tab == 0);
        ShowControls(pageBegins_[1], pageBegins_[2], tab == 1);
        // The focus must not stay on a hidden page.
        if (IsChild(Window(), focus) != 0 && IsWindowVisible(focus) == 0) SetFocus(tabs_);
    }

    void ShowKey(int32_t action) const {
        const auto at = static_cast<size_t>(action);
        const HotkeyBindings& bindings = ports_.bindings;
        SetText(keys_[at], action == waiting_ ? kWaiting : KeyFieldText(bindings, action));
        SetText(keyRemarks_[at], action == waiting_ ? "" : KeyRemark(bindings, ports_.refused, action));
    }

    void ShowController(int32_t action) const {
        const auto at = static_cast<size_t>(action);
        const HotkeyBindings& bindings = ports_.bindings;
        const HotkeyBinding binding = BindingOf(bindings, action);
        if (SendMessageW(buttons_[at], CB_GETDROPPEDSTATE, 0, 0) == 0) {
            Choose(buttons_[at], std::max(binding.gameControllerButton, -1), ControllerButtonName);
        }
        if (SendMessageW(triggers_[at], CB_GETDROPPEDSTATE, 0, 0) == 0) {
            Choose(triggers_[at], std::max(binding.gameControllerTrigger, -1), ControllerTriggerName);
        }
        SetText(controllerRemarks_[at], ControllerRemark(bindings, action));
    }

    bool IsSaved() const { return HaveSameBindings(saved_, ports_.bindings); }

    void ShowStatus() const {
        SetText(status_, !trouble_.empty() ? trouble_
                         : IsSaved()       ? ""
                                           : "In effect, but not saved yet: lost when the player ends.");
    }

    // Unregisters the hotkeys while a field waits, so that all keys arrive here.
    void WaitForKey(int32_t action) {
        StopWaiting();
        waiting_ = action;
        ports_.releaseHotkeys();
        Refresh();
    }

    void StopWaiting() {
        if (waiting_ == kNobody) return;
        waiting_ = kNobody;
        ports_.takeHotkeys();
        Refresh();
    }

    void TakeKey(int32_t key) {
        const HotkeyBinding pressed{key, IsHeld(VK_CONTROL), IsHeld(VK_MENU), IsHeld(VK_SHIFT)};
        if (!TakePressedKey(BindingToChange(ports_.bindings, waiting_), pressed)) return;
        trouble_.clear();
        StopWaiting();
    }

    void TakeController(int32_t action) {
        HotkeyBinding& binding = BindingToChange(ports_.bindings, action);
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
        const bool isSaved = SaveHotkeyConfig(ports_.file, ports_.bindings);
        trouble_ = isSaved ? "" : "Could not be saved: " + ports_.file;
        if (isSaved) saved_ = ports_.bindings;
        ShowStatus();
    }

    void Reload() {
        HotkeyBindings loaded;
        if (!Load(loaded)) return ShowStatus();
        saved_ = loaded;
        ports_.bindings = loaded;
        ports_.takeHotkeys();
        Refresh();
    }

    // False, with trouble_ set, when the file yields no bindings.
    bool Load(HotkeyBindings& loaded) {
        trouble_.clear();
        try {
            if (!LoadHotkeyConfig(ports_.file, loaded)) trouble_ = "Nothing has been saved yet.";
        } catch (const std::exception&) {
            trouble_ = "The file is not a valid hotkey file: " + ports_.file;
        }
        return trouble_.empty();
    }

    HotkeyBindings SavedBindings() {
        HotkeyBindings loaded;
        const bool isLoaded = IsFile(ports_.file) && Load(loaded);
        return isLoaded ? loaded : BuiltInHotkeys();
    }

    void ClearAll() {
        trouble_.clear();
        if (tab_ == 0) {
            ClearKeys(ports_.bindings);
        } else {
            ClearControllers(ports_.bindings);
        }
        ports_.takeHotkeys();
        Refresh();
    }

    HotkeyPorts ports_;
    HotkeyBindings saved_;   // as in the file
    HotkeyBindings opened_;  // as in force when the window was opened
    std::string trouble_;
    int32_t waiting_ = kNobody;  // the action whose field waits for a key
    int tab_ = 0;
    std::array<size_t, 3> pageBegins_{};  // each page's first control, and the end of the last page
    std::array<HWND, kActionsWithKeys> keys_{}, keyRemarks_{};
    std::array<HWND, kHotkeyActions> buttons_{}, triggers_{}, controllerRemarks_{};
    std::vector<HWND> labels_;  // of the page that is being made
    std::vector<NumberField> fields_;
    HWND tabs_ = nullptr, rumble_ = nullptr, toggleRumble_ = nullptr, latch_ = nullptr, status_ = nullptr;
};

}  // namespace

std::unique_ptr<Dialog> MakeHotkeyDialog(HotkeyPorts ports) {
    return std::make_unique<HotkeyDialog>(std::move(ports));
}

}  // namespace hullrider
