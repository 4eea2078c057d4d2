// Receives a network stream on a worker into a StreamBuffer: cuts out its titles, finds the parts of chained Ogg, and
// connects again, after growing delays, when the connection is lost. Any thread.
#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <stop_token>
#include <string>

#include "audio/stream_buffer.h"

namespace hullrider {

// What the server says of the stream. UTF-8.
struct StreamHeaders {
    bool isIcy = false;  // an old server, whose status line begins with ICY
    std::string block;   // "name:value", each zero-terminated, and a final zero
};

class StreamReceiver : public std::enable_shared_from_this<StreamReceiver> {
public:
    explicit StreamReceiver(std::string url, std::chrono::milliseconds connectTimeout);

    // False when the system has no thread left.
    bool Start();

    StreamBuffer& Buffer() { return buffer_; }
    StreamHeaders Headers() const;

    // Until this call a connection that brings nothing ends the stream, because a caller waits for its beginning.
    void KeepConnected() { keepsConnected_ = true; }
    bool IsConnected() const { return isConnected_; }
    int Connections() const { return connections_; }  // made so far
    // Receives from a new connection, for bytes that cannot be decoded.
    void Reconnect();
    // The end. Waits for nothing.
    void Cancel();

private:
    friend class StreamConnection;

    void Run();
    bool WaitToReconnect(std::chrono::milliseconds delay);
    void SetHeaders(StreamHeaders headers);

    const std::string url_;
    const std::chrono::milliseconds connectTimeout_;
    StreamBuffer buffer_;
    std::stop_source stop_;
    std::atomic<bool> keepsConnected_{false}, leavesConnection_{false}, isConnected_{false};
    std::atomic<int> connections_{0};
    mutable std::mutex mutex_;
    StreamHeaders headers_;
};

}  // namespace hullrider
