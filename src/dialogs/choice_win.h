// A drop-down list whose texts each stand for a number. UI thread.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace hullrider {

void AddToChoice(HWND choice, const std::string& text, int32_t value);

// The value of the chosen text. A text must be chosen.
int32_t ChosenIn(HWND choice);

// Chooses the text of that value. A missing value is added to the list under its name.
void Choose(HWND choice, int32_t value, std::string (*name)(int32_t));

}  // namespace hullrider
