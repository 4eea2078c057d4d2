// A field for a whole number with a remark beside it. What is typed is taken at once when it makes sense; when not, the
// remark says what would, and the number in force comes back when the field is left. UI thread.
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

    // The controls are made by the caller; the edit control's changes and its being left are to be reported here.
    NumberField(const NumberControls& controls, HWND remark, Meaning meaning);

    void OnChange() const;
    void OnLeave() const;

    // The number in force, unless the user is typing here.
    void Show() const;

    // New bounds of what makes sense, for the arrows too.
    void SetBounds(int32_t lowest, int32_t highest);

    // A field that is disabled hands the focus on to `heir`.
    void Enable(bool isEnabled, HWND heir) const;

private:
    NumberControls controls_;
    HWND remark_;
    Meaning meaning_;
};

}  // namespace hullrider
