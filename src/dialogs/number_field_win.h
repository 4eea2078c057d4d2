// A field for a whole number with a remark beside it. A valid number takes effect as it is typed. For an invalid one,
// the remark shows the bounds, and the current number returns when the field loses the focus. UI thread.
#pragma once

#include "dialogs/dialog_win.h"

namespace hullrider {

class NumberField {
public:
    struct Meaning {
        int32_t lowest = 0, highest = 0;
        std::function<int32_t()> get;
        std::function<void(int32_t)> set;  // only with numbers within the bounds
    };

    // The caller makes the controls, and calls OnChange and OnLeave for the edit control.
    NumberField(const NumberControls& controls, HWND remark, Meaning meaning);

    void OnChange() const;
    void OnLeave() const;

    // Shows the current number, unless the user is typing here.
    void Show() const;

    // Sets new bounds, for the arrows too.
    void SetBounds(int32_t lowest, int32_t highest);

    // A field that is disabled passes the focus to `heir`.
    void Enable(bool isEnabled, HWND heir) const;

private:
    NumberControls controls_;
    HWND remark_;
    Meaning meaning_;
};

}  // namespace hullrider
