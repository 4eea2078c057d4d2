// What the user must see and confirm. UI thread.
#pragma once

#include <string_view>

namespace hullrider {

// A message box with the title "Error" and the error icon; returns when it is closed. Without a window system the text
// goes to the error stream.
void ShowErrorBox(std::string_view text);

// True while a box waits for the user; timers go on meanwhile.
bool IsErrorBoxOpen();

// For as long as it lives, a window that must be answered before anything else is open: a question, a window for
// choosing a file.
class ModalOperation {
public:
    ModalOperation();
    ~ModalOperation();
    ModalOperation(const ModalOperation&) = delete;
    ModalOperation& operator=(const ModalOperation&) = delete;
};

// True while there is one, or an error box.
bool IsModalOperationOpen();

// Where error boxes go instead, for a front that has no windows; null restores the box.
void SetErrorBoxHandler(void (*handler)(std::string_view text));

}  // namespace hullrider
