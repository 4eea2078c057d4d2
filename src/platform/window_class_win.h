// Registration of this program's window classes. Windows sources only; UI thread.
#pragma once

#include <windows.h>

namespace hullrider {

// Registers the class with the program's icon and the standard arrow, redrawn whole when it is resized, over a
// background of that system color (COLOR_...). True also when it was registered before.
bool RegisterWindowClass(HINSTANCE instance, const wchar_t* name, WNDPROC procedure, int backgroundColor);

}  // namespace hullrider
