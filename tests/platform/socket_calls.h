// The members of Socket. Included once, by the file of the system, behind its own headers and what it calls
// NativeSocket, BufferSize, kQuietly, AcceptOn, Poll and CloseNative.
#pragma once

#include <array>
#include <cstdlib>
#include <utility>

#include "tests/platform/socket.h"

namespace hullrider {

inline NativeSocket Native(intptr_t handle) {
    return static_cast<NativeSocket>(handle);
}

Socket Socket::Listen() {
    Socket listener(OpenTcp());
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const NativeSocket native = Native(listener.handle_);
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
    socklen_t size = sizeof address;
    getsockname(Native(handle_), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

std::optional<Socket> Socket::Accept() const {
    const intptr_t accepted = AcceptOn(Native(handle_));
    if (accepted == -1) return std::nullopt;
    return Socket(accepted);
}

bool Socket::Send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const auto sent = send(Native(handle_), bytes.data(), static_cast<BufferSize>(bytes.size()), kQuietly);
        if (sent <= 0) return false;
        bytes.remove_prefix(static_cast<size_t>(sent));
    }
    return true;
}

std::string Socket::Receive() const {
    std::array<char, 4096> buffer;
    const auto count = recv(Native(handle_), buffer.data(), buffer.size(), 0);
    return {buffer.data(), static_cast<size_t>(count > 0 ? count : 0)};
}

bool Socket::IsReadable(std::chrono::milliseconds within) const {
    pollfd event{Native(handle_), POLLIN, 0};
    return Poll(event, static_cast<int>(within.count())) > 0;
}

void Socket::Shutdown() const {
    shutdown(Native(handle_), kBothWays);
}

void Socket::BreakOnClose() const {
    const linger atOnce{1, 0};
    setsockopt(Native(handle_), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
}

void Socket::Close() {
    if (handle_ != -1) CloseNative(Native(handle_));
    handle_ = -1;
}

}  // namespace hullrider
