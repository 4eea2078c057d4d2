// A field for a number with arrows, and a remark beside it. A valid number takes effect as it is typed, or, if it would
// change another field too, when the field loses the focus. For an invalid one, the remark shows the bounds, and the
// current number returns with the loss of focus. UI thread.
#pragma once

#include "dialogs/dialog_win.h"
#include "dialogs/number_rule.h"

namespace hullrider {

class NumberField {
public:
    struct Meaning {
        NumberRule rule;
        std::function<int32_t()> get;
        std::function<void(int32_t)> set;  // only with numbers within the bounds
        // What else a valid number would change, for the remark; empty: nothing. May be missing.
        std::function<std::string(int32_t)> sideEffect;
        // A remark on the current number. May be missing.
        std::function<std::string(int32_t)> remark;
    };

    // The caller makes the controls, and calls OnChange, OnLeave and OnArrow for them. Fields may share a remark.
    NumberField(const NumberControls& controls, HWND remark, Meaning meaning);

    void OnChange();
    void OnLeave();
    void OnArrow(int steps);

    // Shows the current number, unless the user is typing here.
    void Show();

    // A field that is disabled passes the focus to `heir`.
    void Enable(bool isEnabled, HWND heir) const;

private:
    std::string RemarkOn(int32_t value) const;
    std::string SideEffectOf(int32_t value) const;
    void ShowRemark(const std::string& remark);

    NumberControls controls_;
    HWND remark_;
    std::string shownRemark_;
    bool isPending_ = false;  // what is typed takes effect when the field loses the focus
    Meaning meaning_;
};

}  // namespace hullrider
