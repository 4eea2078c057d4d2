// Bytes of a file in the making.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hullrider::demo {

class Bytes {
public:
    void U8(int value) { text_.push_back(static_cast<char>(value)); }
    void Little16(int value) { U8(value), U8(value >> 8); }
    void Little32(uint32_t value) {
        Little16(static_cast<int>(value & 0xFFFF)), Little16(static_cast<int>(value >> 16));
    }
    void Big16(int value) { U8(value >> 8), U8(value); }
    void Big32(uint32_t value) { Big16(static_cast<int>(value >> 16)), Big16(static_cast<int>(value & 0xFFFF)); }
    void Text(std::string_view text) { text_ += text; }
    // Exactly `size` bytes: cut, or filled up with `fill`.
    void Text(std::string_view text, size_t size, char fill = '\0') {
        text_ += text.substr(0, size);
        if (text.size() < size) text_.append(size - text.size(), fill);
    }
    void Zeros(size_t count) { text_.append(count, '\0'); }
    void PadTo(size_t multiple) { Zeros((multiple - text_.size() % multiple) % multiple); }
    void PutLittle16(size_t at, int value) {
        text_[at] = static_cast<char>(value);
        text_[at + 1] = static_cast<char>(value >> 8);
    }

    size_t size() const { return text_.size(); }
    const std::string& text() const { return text_; }

private:
    std::string text_;
};

}  // namespace hullrider::demo
