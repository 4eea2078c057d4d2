#include "dialogs/number_field_win.h"

#include "dialogs/number_rule.h"

namespace hullrider {

NumberField::NumberField(const NumberControls& controls, HWND remark, Meaning meaning)
    : controls_(controls), remark_(remark), meaning_(std::move(meaning)) {
    SetText(controls_.edit, std::to_string(meaning_.get()));
}

void NumberField::OnChange() const {
    std::string remark;
    const std::optional<int32_t> value = ReadNumber(TextOf(controls_.edit), meaning_.lowest, meaning_.highest, remark);
    SetText(remark_, remark);
    if (value && *value != meaning_.get()) meaning_.set(*value);
}

void NumberField::OnLeave() const {
    const std::string inForce = std::to_string(meaning_.get());
    SetText(controls_.edit, inForce);
    // A settings file may hold a number outside the bounds.
    std::string remark;
    ReadNumber(inForce, meaning_.lowest, meaning_.highest, remark);
    SetText(remark_, remark);
}

void NumberField::Show() const {
    if (GetFocus() != controls_.edit) OnLeave();
}

void NumberField::SetBounds(int32_t lowest, int32_t highest) {
    if (lowest == meaning_.lowest && highest == meaning_.highest) return;
    meaning_.lowest = lowest;
    meaning_.highest = highest;
    SendMessageW(controls_.arrows, UDM_SETRANGE32, static_cast<WPARAM>(lowest), highest);
}

void NumberField::Enable(bool isEnabled, HWND heir) const {
    EnableControl(controls_.edit, isEnabled, heir);
    EnableWindow(controls_.arrows, isEnabled ? TRUE : FALSE);
}

}  // namespace hullrider
