#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>

namespace hullrider {
namespace {

using NativeSocket = int;
using BufferSize = size_t;
constexpr int kQuietly = MSG_NOSIGNAL, kBothWays = SHUT_RDWR;

intptr_t OpenTcp() {
    return socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

intptr_t AcceptOn(int listener) {
    return accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
}

int Poll(pollfd& event, int ms) {
    return poll(&event, 1, ms);
}

void CloseNative(int descriptor) {
    close(descriptor);
}

}  // namespace
}  // namespace hullrider

#include "tests/platform/socket_calls.h"
