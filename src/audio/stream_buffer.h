// The bytes of a network stream on their way from the receiver to the decoder, at most kMostBytes of them, with what
// belongs to places among them: titles, and joints, where a new stream begins (after a lost connection, or the next
// part of chained Ogg). One receiving and one decoding thread; other functions from any.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

class StreamBuffer {
public:
    static constexpr size_t kMostBytes = size_t{4} << 20;  // 15 s at 2 Mbit/s
    static constexpr size_t kMostTitles = 200;             // beyond that the newest is replaced

    // --- Receiver. Waits for room; false once canceled.
    bool Append(std::string_view bytes);
    // For the sound that is appended from now on.
    void AddTitle(std::string_view title);
    void AddJoint();
    // Nothing follows. `error`: the BASS code of a failure, or BASS_OK.
    void End(int error);

    // --- Decoder. Waits for bytes, and reads no further than to the next joint. 0: there is a joint, the end, the
    // deadline, or it was canceled.
    size_t Read(uint8_t* out, size_t size);
    // Drops everything before the next joint and continues behind it. False when no joint has arrived.
    bool PassJoint();
    // The title at the place `at`, a count of bytes read since the start, if another one begins there or before it.
    // Each is returned once.
    std::optional<std::string> TakeTitle(uint64_t at);
    // From now on Read waits no longer than until then.
    void SetDeadline(std::optional<std::chrono::steady_clock::time_point> deadline);

    // Bytes that Read returns without waiting, and all that have arrived.
    size_t Available() const;
    size_t BytesAhead() const;
    // Nothing follows these, up to a joint or the end.
    bool IsPartComplete() const;
    // Nothing is left, and nothing follows.
    bool IsOver() const;
    uint64_t BytesRead() const;
    int Error() const;

    // Ends every wait and everything that this buffer yields.
    void Cancel();

private:
    struct Title {
        uint64_t at;
        std::string text;
    };
    uint64_t PartEnd() const;
    bool HasNews() const;
    void Take(size_t size);

    mutable std::mutex mutex_;
    std::condition_variable arrived_, taken_;
    std::deque<std::string> pieces_;
    size_t frontTaken_ = 0;  // bytes of the first piece
    uint64_t written_ = 0, read_ = 0;
    std::deque<uint64_t> joints_;  // ahead
    std::deque<Title> titles_;     // not returned yet
    std::optional<std::chrono::steady_clock::time_point> deadline_;
    bool isEnded_ = false, isCanceled_ = false;
    int error_ = 0;
};

}  // namespace hullrider
