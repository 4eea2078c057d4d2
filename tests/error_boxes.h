// While it lives, error boxes are not shown but remembered.
#pragma once

#include <string>

#include "platform/message_box.h"

namespace hullrider {

struct ErrorBoxes {
    ErrorBoxes() {
        last.clear();
        SetErrorBoxHandler([](std::string_view text) { last = text; });
    }
    ~ErrorBoxes() { SetErrorBoxHandler(nullptr); }
    ErrorBoxes(const ErrorBoxes&) = delete;
    ErrorBoxes& operator=(const ErrorBoxes&) = delete;

    static inline std::string last;
};

}  // namespace hullrider
