#include "dialogs/number_field_win.h"

#include "dialogs/number_rule.h"

namespace hullrider {

NumberField::NumberField(HWND edit, HWND remark, Meaning meaning)
    : edit_(edit), remark_(remark), meaning_(std::move(meaning)) {
    SetText(edit_, std::to_string(meaning_.get()));
}

void NumberField::OnChange() const {
    std::string remark;
    const std::optional<int32_t> value = ReadNumber(TextOf(edit_), meaning_.lowest, meaning_.highest, remark);
    SetText(remark_, remark);
    if (value && *value != meaning_.get()) meaning_.set(*value);
}

void NumberField::OnLeave() const {
    const std::string inForce = std::to_string(meaning_.get());
    SetText(edit_, inForce);
    // A settings file may hold what does not make sense here.
    std::string remark;
    ReadNumber(inForce, meaning_.lowest, meaning_.highest, remark);
    SetText(remark_, remark);
}

void NumberField::Show() const {
    if (GetFocus() != edit_) OnLeave();
}

void NumberField::SetBounds(int32_t lowest, int32_t highest) {
    meaning_.lowest = lowest;
    meaning_.highest = highest;
}

}  // namespace hullrider
