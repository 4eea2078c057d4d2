#include <system_error>

#include "platform/program.h"

namespace hullrider {

bool StartElevated(const std::string& /*program*/, const std::string& /*folder*/, std::string& error,
                   std::function<void()> /*onEnd*/) {
    error = std::make_error_code(std::errc::not_supported).message();
    return false;
}

bool ShowFolder(const std::string& /*folder*/) {
    return false;
}

}  // namespace hullrider
