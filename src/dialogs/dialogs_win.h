// The option windows, one for each subject, opened from the menu. UI thread.
#pragma once

#include <windows.h>

#include <memory>

#include "dialogs/dialog_host.h"

namespace hullrider {

// Opens the window of that class, or brings it forward when it is open. Its controls work on the host, which lives as
// long as any window does.
void OpenDialog(HINSTANCE instance, const std::shared_ptr<DialogHost>& host, const char* className, const char* title);

// Closes all that are open, as the user would.
void CloseDialogs();

// For the message loop: keys between the controls of an option window. True when the message is dealt with.
bool TranslateDialogMessage(MSG& message);

}  // namespace hullrider
