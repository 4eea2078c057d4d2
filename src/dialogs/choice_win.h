// A list that drops down, of texts that each stand for a number. UI thread.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace hullrider {

void AddToChoice(HWND choice, const std::string& text, int32_t value);

// What the chosen text stands for. Something must have been chosen.
int32_t ChosenIn(HWND choice);

// Chooses the text of that value. A value that is not in the list is added to it, by its name.
void Choose(HWND choice, int32_t value, std::string (*name)(int32_t));

}  // namespace hullrider
