#include "audio/icy_cutter.h"

#include <algorithm>
#include <utility>

namespace hullrider {

namespace {

constexpr size_t kTitleUnit = 16;

}  // namespace

bool IcyCutter::Feed(std::string_view bytes, const Receive& onSound, const Receive& onTitle) {
    if (interval_ == 0) return bytes.empty() || onSound(bytes);
    while (!bytes.empty()) {
        if (isInTitle_) {
            if (!TakeTitle(bytes, onTitle)) return false;
        } else if (soundLeft_ > 0) {
            if (!onSound(TakeSound(bytes))) return false;
        } else {
            titleLeft_ = static_cast<unsigned char>(bytes.front()) * kTitleUnit;
            bytes.remove_prefix(1);
            isInTitle_ = titleLeft_ > 0;
            soundLeft_ = interval_;
        }
    }
    return true;
}

std::string_view IcyCutter::TakeSound(std::string_view& bytes) {
    const std::string_view sound = bytes.substr(0, soundLeft_);
    bytes.remove_prefix(sound.size());
    soundLeft_ -= sound.size();
    return sound;
}

bool IcyCutter::TakeTitle(std::string_view& bytes, const Receive& onTitle) {
    const std::string_view piece = bytes.substr(0, titleLeft_);
    bytes.remove_prefix(piece.size());
    titleLeft_ -= piece.size();
    title_ += piece;
    if (titleLeft_ > 0) return true;
    isInTitle_ = false;
    const std::string title = std::exchange(title_, {});
    const std::string_view text = std::string_view(title).substr(0, title.find('\0'));
    return text.empty() || onTitle(text);
}

}  // namespace hullrider
