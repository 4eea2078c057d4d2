#include "platform/paths.h"

#include <stdexcept>
#include <system_error>

namespace hullrider {

namespace {

// Length of the well-formed sequence at the start of `text`, 0 when there is none.
size_t SequenceLength(std::string_view text) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    const auto continues = [&](size_t i) { return i < text.size() && (byte(i) & 0xC0) == 0x80; };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return continues(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        if (!continues(1) || !continues(2)) return 0;
        if (lead == 0xE0 && byte(1) < 0xA0) return 0;  // overlong
        if (lead == 0xED && byte(1) > 0x9F) return 0;  // surrogate
        return 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        if (!continues(1) || !continues(2) || !continues(3)) return 0;
        if (lead == 0xF0 && byte(1) < 0x90) return 0;  // overlong
        if (lead == 0xF4 && byte(1) > 0x8F) return 0;  // beyond U+10FFFF
        return 4;
    }
    return 0;
}

}  // namespace

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const size_t length = SequenceLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::filesystem::path PathFromUtf8(std::string_view text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string Utf8FromPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    std::string utf8(text.begin(), text.end());
    if (!IsUtf8(utf8)) throw std::range_error("the name is not valid text");
    return utf8;
}

std::string StatePath(std::string_view folder, std::string_view name) {
    while (!name.empty() && (name.front() == '\\' || name.front() == '/')) name.remove_prefix(1);
    constexpr char kSeparator = static_cast<char>(std::filesystem::path::preferred_separator);
    std::string path(folder);
    path += kSeparator;
    for (const char c : name) path += c == '\\' ? kSeparator : c;
    return path;
}

std::string_view FileStem(std::string_view path) {
    const std::string_view name = path.substr(path.find_last_of("/\\") + 1);
    const size_t dot = name.find_last_of('.');
    return dot == std::string_view::npos || dot == 0 ? name : name.substr(0, dot);
}

std::string_view FolderOf(std::string_view path) {
    const size_t end = path.find_last_of("/\\");
    return end == std::string_view::npos ? std::string_view() : path.substr(0, end);
}

std::string AbsolutePath(const std::string& path) {
    std::error_code error;
    std::filesystem::path absolute = std::filesystem::absolute(PathFromUtf8(path), error).lexically_normal();
    if (error) return path;
    if (!absolute.has_filename() && absolute.has_relative_path()) absolute = absolute.parent_path();
    const std::u8string text = absolute.u8string();
    return {text.begin(), text.end()};
}

std::string WorkingFolder() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::current_path(error);
    const std::u8string text = folder.u8string();
    return error ? "." : std::string(text.begin(), text.end());
}

}  // namespace hullrider
