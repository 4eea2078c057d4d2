#include <string>

#include "platform/console.h"
#include "platform/message_box_system.h"

namespace hullrider {

void ShowSystemErrorBox(std::string_view text) {
    PrintErrorLine("Error: " + std::string(text));
}

}  // namespace hullrider
