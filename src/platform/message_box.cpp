#include "platform/message_box.h"

#include <atomic>

#include "platform/message_box_system.h"

namespace hullrider {

namespace {

std::atomic<void (*)(std::string_view)> errorBoxHandler{nullptr};
std::atomic<int> openBoxes{0};
std::atomic<int> modalOperations{0};

}  // namespace

void SetErrorBoxHandler(void (*handler)(std::string_view)) {
    errorBoxHandler = handler;
}

void ShowErrorBox(std::string_view text) {
    void (*const handler)(std::string_view) = errorBoxHandler;
    if (handler != nullptr) {
        handler(text);
    } else {
        ++openBoxes;
        ShowSystemErrorBox(text);
        --openBoxes;
    }
}

bool IsErrorBoxOpen() {
    return openBoxes > 0;
}

ModalOperation::ModalOperation() {
    ++modalOperations;
}

ModalOperation::~ModalOperation() {
    --modalOperations;
}

bool IsModalOperationOpen() {
    return IsErrorBoxOpen() || modalOperations > 0;
}

}  // namespace hullrider
