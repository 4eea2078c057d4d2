// Cuts the titles out of a stream that a server sends with them (the SHOUTcast protocol): each `interval` bytes of
// sound are followed by a byte with the length of a title block in units of 16 bytes, and the block, padded with zeros.
// Pure.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace hullrider {

class IcyCutter {
public:
    using Receive = std::function<bool(std::string_view bytes)>;

    // 0: there are no titles.
    explicit IcyCutter(size_t interval) : interval_(interval), soundLeft_(interval) {}

    // Takes the next bytes of the stream, of any number, and hands on what is in them in its order. `onTitle` receives
    // each complete block without its padding; empty ones, which mean no change, are left out. False when a receiver
    // returns false; the rest is dropped.
    bool Feed(std::string_view bytes, const Receive& onSound, const Receive& onTitle);

private:
    std::string_view TakeSound(std::string_view& bytes);
    bool TakeTitle(std::string_view& bytes, const Receive& onTitle);

    size_t interval_;
    size_t soundLeft_;        // until the next length byte
    bool isInTitle_ = false;  // behind a length byte
    size_t titleLeft_ = 0;
    std::string title_;
};

}  // namespace hullrider
