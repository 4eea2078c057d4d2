#include "dialogs/number_field_win.h"

namespace hullrider {

NumberField::NumberField(const NumberControls& controls, HWND remark, Meaning meaning)
    : controls_(controls), remark_(remark), meaning_(std::move(meaning)) {
    SetText(controls_.edit, NumberText(meaning_.get(), meaning_.rule.perUnit));
}

void NumberField::OnChange() {
    std::string remark;
    const std::optional<int32_t> value = ReadNumber(TextOf(controls_.edit), meaning_.rule, remark);
    isPending_ = false;
    if (!value) return ShowRemark(remark);
    const std::string sideEffect = SideEffectOf(*value);
    isPending_ = !sideEffect.empty();
    if (!isPending_ && *value != meaning_.get()) meaning_.set(*value);
    ShowRemark(isPending_ ? sideEffect : RemarkOn(*value));
}

void NumberField::OnLeave() {
    std::string remark;
    const std::optional<int32_t> typed = ReadNumber(TextOf(controls_.edit), meaning_.rule, remark);
    if (isPending_ && typed) meaning_.set(*typed);
    isPending_ = false;
    const std::string inForce = NumberText(meaning_.get(), meaning_.rule.perUnit);
    SetText(controls_.edit, inForce);
    // A settings file may hold a number outside the bounds.
    const bool isValid = ReadNumber(inForce, meaning_.rule, remark).has_value();
    ShowRemark(isValid ? RemarkOn(meaning_.get()) : remark);
}

void NumberField::OnArrow(int steps) {
    std::string remark;
    const std::optional<int32_t> typed = ReadNumber(TextOf(controls_.edit), meaning_.rule, remark);
    const int32_t value = SteppedNumber(typed.value_or(meaning_.get()), steps, meaning_.rule);
    SetText(controls_.edit, NumberText(value, meaning_.rule.perUnit));
}

void NumberField::Show() {
    if (GetFocus() == controls_.edit) return;
    const int32_t inForce = meaning_.get();
    const std::string text = NumberText(inForce, meaning_.rule.perUnit);
    SetText(controls_.edit, text);
    std::string remark;
    ShowRemark(ReadNumber(text, meaning_.rule, remark) ? RemarkOn(inForce) : remark);
}

void NumberField::Enable(bool isEnabled, HWND heir) const {
    EnableControl(controls_.edit, isEnabled, heir);
    EnableWindow(controls_.arrows, isEnabled ? TRUE : FALSE);
}

std::string NumberField::RemarkOn(int32_t value) const {
    return meaning_.remark ? meaning_.remark(value) : std::string();
}

std::string NumberField::SideEffectOf(int32_t value) const {
    return meaning_.sideEffect && value != meaning_.get() ? meaning_.sideEffect(value) : std::string();
}

// Writes only what changes: another field may have a remark in the same place.
void NumberField::ShowRemark(const std::string& remark) {
    if (remark == shownRemark_) return;
    shownRemark_ = remark;
    SetText(remark_, remark);
}

}  // namespace hullrider
