#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <utility>

#include "tests/platform/socket.h"

namespace hullrider {

namespace {

int Descriptor(intptr_t handle) {
    return static_cast<int>(handle);
}

}  // namespace

Socket Socket::Listen() {
    Socket listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int descriptor = Descriptor(listener.handle_);
    if (bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) std::abort();
    if (listen(descriptor, 16) != 0) std::abort();
    return listener;
}

Socket::Socket(Socket&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

Socket& Socket::operator=(Socket&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
}

uint16_t Socket::Port() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(Descriptor(handle_), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

std::optional<Socket> Socket::Accept() const {
    const int accepted = accept4(Descriptor(handle_), nullptr, nullptr, SOCK_CLOEXEC);
    if (accepted < 0) return std::nullopt;
    return Socket(accepted);
}

bool Socket::Send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t sent = send(Descriptor(handle_), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) return false;
        bytes.remove_prefix(static_cast<size_t>(sent));
    }
    return true;
}

std::string Socket::Receive() const {
    std::array<char, 4096> buffer;
    const ssize_t count = recv(Descriptor(handle_), buffer.data(), buffer.size(), 0);
    return {buffer.data(), static_cast<size_t>(count > 0 ? count : 0)};
}

bool Socket::IsReadable(std::chrono::milliseconds within) const {
    pollfd event{Descriptor(handle_), POLLIN, 0};
    return poll(&event, 1, static_cast<int>(within.count())) > 0;
}

void Socket::Shutdown() const {
    shutdown(Descriptor(handle_), SHUT_RDWR);
}

void Socket::BreakOnClose() const {
    const linger atOnce{1, 0};
    setsockopt(Descriptor(handle_), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

void Socket::Close() {
    if (handle_ >= 0) close(Descriptor(handle_));
    handle_ = -1;
}

}  // namespace hullrider
