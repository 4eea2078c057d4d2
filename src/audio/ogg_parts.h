// Finds where a new part begins in a stream of chained Ogg (RFC 3533): radio servers begin one with each title, and its
// codec or sample rate may be another. Any other stream passes unchanged. Pure.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace hullrider {

class OggParts {
public:
    using Receive = std::function<bool(std::string_view bytes)>;

    // Takes the next bytes of the stream, of any number, and hands all of them on, possibly some of them with the next
    // call. `onPart` comes before each part but the first. False when `onBytes` returns false; the rest is dropped.
    bool Feed(std::string_view bytes, const Receive& onBytes, const std::function<void()>& onPart);

private:
    bool TakePageHead(std::string_view& bytes, const Receive& onBytes, const std::function<void()>& onPart);
    size_t PageHeadSize() const;

    bool isOgg_ = true;  // until the first bytes say otherwise
    std::string head_;   // of the next page, as far as it has arrived
    size_t bodyLeft_ = 0;
    bool isInHeads_ = true;  // no page but first pages of the part's streams so far
};

}  // namespace hullrider
