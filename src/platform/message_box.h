// Messages that the user must see and confirm. UI thread.
#pragma once

#include <string_view>

namespace hullrider {

// A message box with the title "Error" and the error icon; returns when it is closed. Without a window system it prints
// the text to the error stream.
void ShowErrorBox(std::string_view text);

// True while a box is open; timers keep running meanwhile.
bool IsErrorBoxOpen();

// Marks that a window which blocks the others is open, such as a question or a file chooser, for as long as the object
// lives.
class ModalOperation {
public:
    ModalOperation();
    ~ModalOperation();
    ModalOperation(const ModalOperation&) = delete;
    ModalOperation& operator=(const ModalOperation&) = delete;
};

// True while such a window or an error box is open.
bool IsModalOperationOpen();

// Receives error boxes instead, for a front without windows; null restores the box.
void SetErrorBoxHandler(void (*handler)(std::string_view text));

}  // namespace hullrider
