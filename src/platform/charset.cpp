#include "platform/charset.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/paths.h"

namespace hullrider {

namespace {

uint8_t ByteAt(std::string_view bytes, size_t at) {
    return at < bytes.size() ? static_cast<uint8_t>(bytes[at]) : uint8_t{0};
}

bool IsAscii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<uint8_t>(c) < 0x80; });
}

void AppendUtf8(std::string& text, char32_t point) {
    const auto trail = [&](int shift) { text += static_cast<char>(0x80 | (point >> shift & 0x3F)); };
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0 | point >> 6);
        trail(0);
    } else if (point < 0x10000) {
        text += static_cast<char>(0xE0 | point >> 12);
        trail(6), trail(0);
    } else {
        text += static_cast<char>(0xF0 | point >> 18);
        trail(12), trail(6), trail(0);
    }
}

// --- Shift-JIS (JIS X 0208:1997, appendix 1, and the rows that code page 932 adds).

bool IsLead(uint8_t byte) {
    return (byte >= 0x81 && byte <= 0x84) || byte == 0x87 || (byte >= 0x88 && byte <= 0x9F) ||
           (byte >= 0xE0 && byte <= 0xEA) || (byte >= 0xED && byte <= 0xEE) || (byte >= 0xFA && byte <= 0xFC);
}

bool IsTrail(uint8_t byte) {
    return byte >= 0x40 && byte <= 0xFC && byte != 0x7F;
}

// Kana and kanji. The punctuation of row 0x81 may stand between them but proves nothing by itself.
bool IsJapaneseLetter(uint8_t lead, uint8_t trail) {
    if (lead == 0x82) return trail >= 0x9F && trail <= 0xF1;
    if (lead == 0x83) return trail <= 0x96;
    return lead >= 0x88;
}

struct ShiftJisReading {
    bool isValid = true;
    bool hasCommonLead = false;  // kana or a level 1 kanji: their lead bytes are not letters in ISO 8859-1
    size_t letters = 0;          // kana and kanji of two bytes
    size_t longestRun = 0;       // of consecutive letters and punctuation
    size_t halfWidth = 0;        // one-byte katakana
    size_t asciiLetters = 0;
};

ShiftJisReading ReadShiftJis(std::string_view bytes) {
    ShiftJisReading reading;
    size_t run = 0;
    for (size_t at = 0; at < bytes.size(); ++at) {
        const uint8_t byte = ByteAt(bytes, at);
        if (IsLead(byte)) {
            if (at + 1 == bytes.size()) break;  // cut off at the end
            const uint8_t trail = ByteAt(bytes, ++at);
            if (!IsTrail(trail)) return {false};
            const bool isLetter = IsJapaneseLetter(byte, trail);
            reading.letters += isLetter ? 1 : 0;
            reading.hasCommonLead = reading.hasCommonLead || (isLetter && byte <= 0x9F);
            run = isLetter || byte == 0x81 ? run + 1 : 0;
            reading.longestRun = std::max(reading.longestRun, run);
            continue;
        }
        run = 0;
        const bool isHalfWidth = byte >= 0xA1 && byte <= 0xDF;
        if (byte >= 0x80 && !isHalfWidth) return {false};
        reading.halfWidth += isHalfWidth ? 1 : 0;
        reading.asciiLetters += (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z' ? 1 : 0;
    }
    return reading;
}

std::string_view WithoutBrokenShiftJis(std::string_view bytes) {
    size_t at = 0;
    while (at < bytes.size()) {
        const size_t next = at + (IsLead(ByteAt(bytes, at)) ? 2 : 1);
        if (next > bytes.size()) break;
        at = next;
    }
    return bytes.substr(0, at);
}

// --- The other encodings.

std::optional<std::string> Utf8FromUtf16(std::string_view bytes) {
    const bool isBigEndian = bytes.starts_with("\xFE\xFF");
    const auto unit = [&](size_t at) {
        const uint8_t first = ByteAt(bytes, at), second = ByteAt(bytes, at + 1);
        return static_cast<char32_t>(isBigEndian ? first << 8 | second : second << 8 | first);
    };
    std::string text;
    for (size_t at = 2; at + 1 < bytes.size(); at += 2) {
        char32_t point = unit(at);
        if (point == 0) break;
        if (point >= 0xD800 && point < 0xE000) {
            const char32_t low = unit(at + 2);
            if (point >= 0xDC00 || low < 0xDC00 || low >= 0xE000) return std::nullopt;
            point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00);
            at += 2;
        }
        AppendUtf8(text, point);
    }
    return text;
}

// Windows-1252 where it differs from ISO 8859-1 (unicode.org, "CP1252.TXT"); 0: no character.
constexpr std::array<char16_t, 32> kFrom0x80{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

std::optional<std::string> Utf8FromWindows1252(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<uint8_t>(c);
        const char32_t point = byte >= 0x80 && byte < 0xA0 ? char32_t{kFrom0x80[byte - 0x80]} : char32_t{byte};
        if (byte >= 0x80 && point == 0) return std::nullopt;
        AppendUtf8(text, point);
    }
    return text;
}

// The bytes that read as this UTF-8 text in ISO 8859-1; nothing when the text holds any other character.
std::optional<std::string> Latin1FromUtf8(std::string_view text) {
    std::string bytes;
    for (size_t at = 0; at < text.size(); ++at) {
        const uint8_t byte = ByteAt(text, at);
        if (byte >= 0x80 && byte != 0xC2 && byte != 0xC3) return std::nullopt;
        bytes += static_cast<char>(byte < 0x80 ? byte : (byte & 3) << 6 | (ByteAt(text, ++at) & 0x3F));
    }
    return bytes;
}

// Without an incomplete UTF-8 sequence at the end.
std::string_view WithoutBrokenUtf8(std::string_view bytes) {
    size_t end = bytes.size();
    while (end > 0 && bytes.size() - end < 3 && (ByteAt(bytes, end - 1) & 0xC0) == 0x80) --end;
    if (IsUtf8(bytes) || end == 0 || ByteAt(bytes, end - 1) < 0xC0) return bytes;
    const std::string_view rest = bytes.substr(0, end - 1);
    return IsAscii(rest) ? bytes : rest;  // ASCII plus one accented letter at the end is not UTF-8
}

std::optional<std::string> FromOldEncoding(std::string_view bytes) {
    if (const std::string_view whole = WithoutBrokenUtf8(bytes); IsUtf8(whole)) return std::string(whole);
    if (IsJapanese(bytes)) {
        if (std::optional<std::string> text = Utf8FromShiftJis(WithoutBrokenShiftJis(bytes))) return text;
    }
    return Utf8FromWindows1252(bytes);
}

}  // namespace

bool IsJapanese(std::string_view bytes) {
    const ShiftJisReading reading = ReadShiftJis(bytes);
    if (!reading.isValid) return false;
    if (reading.hasCommonLead && (reading.longestRun >= 2 || reading.asciiLetters == 0)) return true;
    constexpr size_t kFewestHalfWidth = 4;
    return reading.halfWidth >= kFewestHalfWidth && reading.asciiLetters == 0;
}

std::optional<std::string> ReadableText(std::string_view bytes) {
    if (bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE")) return Utf8FromUtf16(bytes);
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    if (IsAscii(bytes)) return std::string(bytes);
    if (!IsUtf8(bytes)) return FromOldEncoding(bytes);
    const std::optional<std::string> misread = Latin1FromUtf8(bytes);
    if (!misread) return std::string(bytes);
    return FromOldEncoding(*misread);
}

}  // namespace hullrider
