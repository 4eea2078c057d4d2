#include <winsock2.h>
#include <ws2tcpip.h>

#include <cstdint>
#include <cstdlib>

namespace hullrider {
namespace {

using NativeSocket = SOCKET;
using BufferSize = int;
constexpr int kQuietly = 0, kBothWays = SD_BOTH;

intptr_t OpenTcp() {
    static const int prepared = [] {
        WSADATA data;
        return WSAStartup(MAKEWORD(2, 2), &data);
    }();
    if (prepared != 0) std::abort();
    return static_cast<intptr_t>(socket(AF_INET, SOCK_STREAM, 0));
}

intptr_t AcceptOn(SOCKET listener) {
    return static_cast<intptr_t>(accept(listener, nullptr, nullptr));  // INVALID_SOCKET is -1
}

int Poll(pollfd& event, int ms) {
    return WSAPoll(&event, 1, ms);
}

void CloseNative(SOCKET native) {
    closesocket(native);
}

}  // namespace
}  // namespace hullrider

#include "tests/platform/socket_calls.h"
