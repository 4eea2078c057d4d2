#include <winsock2.h>

#include <array>
#include <cstdlib>
#include <utility>

#include "tests/platform/socket.h"

namespace hullrider {

namespace {

SOCKET Native(intptr_t handle) {
    return static_cast<SOCKET>(handle);
}

void PrepareOnce() {
    static const int prepared = [] {
        WSADATA data;
        return WSAStartup(MAKEWORD(2, 2), &data);
    }();
    if (prepared != 0) std::abort();
}

}  // namespace

Socket Socket::Listen() {
    PrepareOnce();
    Socket listener(static_cast<intptr_t>(socket(AF_INET, SOCK_STREAM, 0)));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const SOCKET native = Native(listener.handle_);
    if (bind(native, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) std::abort();
    if (listen(native, 16) != 0) std::abort();
    return listener;
}

Socket::Socket(Socket&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

Socket& Socket::operator=(Socket&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
}

uint16_t Socket::Port() const {
    sockaddr_in address{};
    int size = sizeof address;
    getsockname(Native(handle_), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

std::optional<Socket> Socket::Accept() const {
    const SOCKET accepted = accept(Native(handle_), nullptr, nullptr);
    if (accepted == INVALID_SOCKET) return std::nullopt;
    return Socket(static_cast<intptr_t>(accepted));
}

bool Socket::Send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const int sent = send(Native(handle_), bytes.data(), static_cast<int>(bytes.size()), 0);
        if (sent <= 0) return false;
        bytes.remove_prefix(static_cast<size_t>(sent));
    }
    return true;
}

std::string Socket::Receive() const {
    std::array<char, 4096> buffer;
    const int count = recv(Native(handle_), buffer.data(), static_cast<int>(buffer.size()), 0);
    return {buffer.data(), static_cast<size_t>(count > 0 ? count : 0)};
}

bool Socket::IsReadable(std::chrono::milliseconds within) const {
    WSAPOLLFD event{Native(handle_), POLLRDNORM, 0};
    return WSAPoll(&event, 1, static_cast<int>(within.count())) > 0;
}

void Socket::Shutdown() const {
    shutdown(Native(handle_), SD_BOTH);
}

void Socket::BreakOnClose() const {
    const linger atOnce{1, 0};
    setsockopt(Native(handle_), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
}

void Socket::Close() {
    if (handle_ >= 0) closesocket(Native(handle_));
    handle_ = -1;
}

}  // namespace hullrider
