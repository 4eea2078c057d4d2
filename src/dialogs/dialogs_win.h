// The open option windows. UI thread.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>

namespace hullrider {

class Dialog;

// Opens a window of that class, or brings forward the one that is open.
void OpenDialog(HINSTANCE instance, const char* className, const char* title,
                const std::function<std::unique_ptr<Dialog>()>& make);

// Closes all that are open, without asking.
void CloseDialogs();

// For the message loop: keyboard navigation in an option window. True when the message has been handled.
bool TranslateDialogMessage(MSG& message);

}  // namespace hullrider
