// TCP on this machine, as little as a test's own server needs. Any thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

class Socket {
public:
    // Listens on a free port of the loopback address.
    static Socket Listen();

    Socket() = default;
    ~Socket() { Close(); }
    Socket(Socket&& other) noexcept;
    Socket& operator=(Socket&& other) noexcept;

    uint16_t Port() const;
    std::optional<Socket> Accept() const;     // waits for somebody
    bool Send(std::string_view bytes) const;  // false when the other side has gone
    std::string Receive() const;              // empty when the other side has gone

    bool IsReadable(std::chrono::milliseconds within) const;
    void Shutdown() const;      // whoever waits for its data waits no longer
    void BreakOnClose() const;  // the other side then sees a broken connection instead of an end

    intptr_t Handle() const { return handle_; }

private:
    explicit Socket(intptr_t handle) : handle_(handle) {}
    void Close();

    intptr_t handle_ = -1;
};

}  // namespace hullrider
