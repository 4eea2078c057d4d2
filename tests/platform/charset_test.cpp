#include "platform/charset.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace hullrider {
namespace {

struct Case {
    std::string bytes;
    std::optional<std::string> text;
};

TEST(Charset, TextIsToldApartByWhatIsValid) {
    const Case table[] = {
        {"", ""},
        {"Plain title", "Plain title"},
        {"Caf\u00E9 \u65E5\u672C", "Caf\u00E9 \u65E5\u672C"},
        {"\xEF\xBB\xBFmarked", "marked"},
        // UTF-8 cut off at the end of a field, in the middle of a character.
        {"\xE6\x97\xA5\xE6\x9C", "\u65E5"},
        {"\xE6\x97\xA5\xE6\x9C\xAC", "\u65E5\u672C"},
        // UTF-16 of both orders, one with a pair of surrogates, one with half of one.
        {std::string("\xFF\xFE\x41\0\xE5\x65", 6), "A\u65E5"},
        {std::string("\xFE\xFF\xD8\x3D\xDE\x00\0\0\0A", 10), "\U0001F600"},
        {std::string("\xFF\xFE\x3D\xD8\x41\0", 6), std::nullopt},
        {std::string("\xFF\xFE\x3D\xD8", 4), std::nullopt},
        // ISO 8859-1 and what Windows adds to it.
        {"Caf\xE9", "Caf\u00E9"},
        {"\xE9t\xE9", "\u00E9t\u00E9"},
        {"Am\xE9lie", "Am\u00E9lie"},
        {"Cr\xE9\xE9" "e", "Cr\u00E9\u00E9" "e"},
        {"Don\x92t", "Don\u2019t"},
        {"\x93Heroes\x94", "\u201CHeroes\u201D"},
        {"Ch\x83teau", "Ch\u0192teau"},
        {"\xC4\xD6\xDC", "\u00C4\u00D6\u00DC"},
        // Shift-JIS: kana, kanji, half-width kana, cut off in mid-character, a single kanji.
        {"\x83\x65\x83\x58\x83\x67", "\u30C6\u30B9\u30C8"},
        {"\x93\xFA\x96\x7B", "\u65E5\u672C"},
        {"\x8D\xF7", "\u685C"},
        {"BGM \x82\xA0\x81[", "BGM \u3042\u30FC"},
        {"\x83\x65\x83\x58\x83", "\u30C6\u30B9"},
        {"\xB1\xB2\xB3\xB4", "\uFF71\uFF72\uFF73\uFF74"},
        // Each of them once more, read as ISO 8859-1 and written as UTF-8.
        {"\u00C3\u00A9t\u00C3\u00A9", "\u00E9t\u00E9"},
        {"\u0083\u0065\u0083\u0058\u0083\u0067", "\u30C6\u30B9\u30C8"},
        {"Don\u0092t", "Don\u2019t"},
        {"\u00E9t\u00E9", "\u00E9t\u00E9"},
        // Nothing that anyone could have meant.
        {"a\x81 b", std::nullopt},
        {"\x9D", std::nullopt},
    };
    for (const Case& test : table) EXPECT_EQ(ReadableText(test.bytes), test.text) << testing::PrintToString(test.bytes);
}

TEST(Charset, AccentsAndBoxDrawingsOfOtherEncodingsAreNotJapanese) {
    const std::string no[] = {"M\x81ller", "gr\x83" "ce \x85 vous", "\x82t\x82", "-\xC4\xC4 intro \xC4\xC4-", "abc",
                              "\x83\x20", "\xFD\xFE"};
    for (const std::string& bytes : no) EXPECT_FALSE(IsJapanese(bytes)) << testing::PrintToString(bytes);
    EXPECT_TRUE(IsJapanese("\x82\xCC\x82\xCC song"));
}

}  // namespace
}  // namespace hullrider
