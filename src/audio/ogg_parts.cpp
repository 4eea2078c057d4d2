#include "audio/ogg_parts.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace hullrider {

namespace {

constexpr std::string_view kCapture = "OggS";
constexpr size_t kFlagsAt = 5, kSegmentsAt = 26, kFixedSize = 27;
constexpr unsigned char kFirstPage = 0x02;

unsigned char ByteAt(const std::string& text, size_t at) {
    return static_cast<unsigned char>(text[at]);
}

}  // namespace

bool OggParts::Feed(std::string_view bytes, const Receive& onBytes, const std::function<void()>& onPart) {
    while (!bytes.empty()) {
        if (!isOgg_) return onBytes(bytes);
        if (bodyLeft_ == 0) {
            if (!TakePageHead(bytes, onBytes, onPart)) return false;
            continue;
        }
        const std::string_view body = bytes.substr(0, bodyLeft_);
        bytes.remove_prefix(body.size());
        bodyLeft_ -= body.size();
        if (!onBytes(body)) return false;
    }
    return true;
}

// As far as it is known.
size_t OggParts::PageHeadSize() const {
    return head_.size() < kFixedSize ? kFixedSize : kFixedSize + ByteAt(head_, kSegmentsAt);
}

// Bytes that are not a page, which only a broken server sends, end the search for parts.
bool OggParts::TakePageHead(std::string_view& bytes, const Receive& onBytes, const std::function<void()>& onPart) {
    const std::string_view piece = bytes.substr(0, PageHeadSize() - head_.size());
    bytes.remove_prefix(piece.size());
    head_ += piece;
    isOgg_ = head_.starts_with(kCapture.substr(0, head_.size()));
    if (!isOgg_) return onBytes(std::exchange(head_, {}));
    if (head_.size() < PageHeadSize()) return true;

    const bool isFirstPage = (ByteAt(head_, kFlagsAt) & kFirstPage) != 0;
    if (isFirstPage && !isInHeads_) onPart();
    isInHeads_ = isFirstPage;
    const auto add = [](size_t sum, char lacing) { return sum + static_cast<unsigned char>(lacing); };
    bodyLeft_ = std::accumulate(head_.begin() + kFixedSize, head_.end(), size_t{0}, add);
    return onBytes(std::exchange(head_, {}));
}

}  // namespace hullrider
