#include "platform/json.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>
#include <vector>

// Every allocation of this program is counted, so that the tests can tell what a reading takes at its peak.
namespace {
constexpr size_t kHead = alignof(std::max_align_t);
std::atomic<size_t> taken{0}, peak{0};
}  // namespace

void* operator new(size_t bytes) {
    auto* const block = static_cast<char*>(std::malloc(bytes + kHead));
    if (block == nullptr) throw std::bad_alloc();
    *reinterpret_cast<size_t*>(block) = bytes;
    const size_t now = taken += bytes;
    if (now > peak) peak = now;
    return block + kHead;
}
void operator delete(void* place) noexcept {
    if (place == nullptr) return;
    char* const block = static_cast<char*>(place) - kHead;
    taken -= *reinterpret_cast<size_t*>(block);
    std::free(block);
}
void operator delete(void* place, size_t /*bytes*/) noexcept {
    operator delete(place);
}

namespace hullrider {
namespace {

using nlohmann::json;

std::string Repeated(const std::string& piece, size_t bytes) {
    std::string text;
    while (text.size() < bytes) text += piece;
    return text;
}

std::string Error(std::string_view text) {
    std::string error;
    EXPECT_FALSE(ParseJson(text, error)) << text.substr(0, 50);
    return error;
}

TEST(Json, WhatIsReadIsWhatAnyReaderOfJsonWouldRead) {
    for (const char* text : {"{}", "[]", "7", "-1.5e3", "\"a\\u00e4\\n\"", "null", "[1,[2,{\"a\":[],\"b\":{\"c\":null}}],true]",
                             R"({"a":1,"a":2,"":{"x":[{"y":"z"},[],3]}})", " { \"a\" : [ 18446744073709551615 ] } "}) {
        std::string error;
        const std::optional<json> read = ParseJson(text, error);
        ASSERT_TRUE(read) << text << ": " << error;
        EXPECT_EQ(*read, json::parse(text)) << text;
        EXPECT_EQ(error, "");
    }
    for (const char* text : {"", "{", "[1,]", "{\"a\"}", "nul", "\"\xFF\"", "1 2", "[1e999]"}) {
        EXPECT_NE(Error(text), "") << text;
    }
    std::string error;
    EXPECT_FALSE(ParseJsonObject("[]", error));
    EXPECT_EQ(error, "it is not a JSON object");
}

TEST(Json, NestingIsAllowedAsDeepAsSixtyFour) {
    std::string error;
    EXPECT_TRUE(ParseJson(std::string(64, '[') + std::string(64, ']'), error)) << error;
    EXPECT_EQ(Error(std::string(65, '[') + std::string(65, ']')), "it is nested too deeply");
    EXPECT_EQ(Error(Repeated("{\"a\":", 1 << 20)), "it is nested too deeply");
}

// A few bytes of text can be a large value in memory.
TEST(Json, ReadingTakesAFewTimesTheTextsMemoryAtMost) {
    constexpr size_t kBytes = size_t{6} << 20;
    const std::string texts[] = {
        "[" + Repeated("[],", kBytes) + "[]]",
        "[" + Repeated("{},", kBytes) + "{}]",
        "[" + Repeated("1,", kBytes) + "1]",
        "[" + Repeated("\"\",", kBytes) + "1]",
        "{\"songs\":[" + Repeated("{\"a\":{}},", kBytes) + "{}]}",
        "{\"songs\":[[" + Repeated("[],", kBytes) + "[]]]}",
        "\"" + std::string(kBytes, 'x') + "\"",
        "\"" + std::string(kBytes, 'x'),
        std::string(kBytes, '1'),
        "\"" + Repeated("\\\"", kBytes),
        std::string(kBytes, '['),
    };
    for (const std::string& text : texts) {
        const size_t before = taken;
        const auto extra = [&] { return peak - before; };
        peak = before;
        if (!text.starts_with("{\"songs\"")) {
            Error(text);
            EXPECT_LT(extra(), text.size() * 3 + (size_t{2} << 20)) << text.substr(0, 30);
            continue;
        }
        size_t values = 0;
        WalkJson(text, "songs", JsonKind::kList, [&values](const std::string&, const json&) { return ++values, 0; });
        EXPECT_LT(extra(), text.size() * 3 + (size_t{2} << 20)) << text.substr(0, 30);
        // Values that are forgotten cost nothing, however many there are.
        if (text.starts_with("{\"songs\":[{")) {
            EXPECT_GT(values, kBytes / 10);
        }
    }
}

TEST(Json, AWalkHandsOverTheValuesOfItsListOrObjectOnly) {
    struct {
        const char* text;
        JsonKind kind;
        const char* values;  // "name=value" each
        bool found;
        bool good;
    } const table[] = {
        {R"({"songs":[1,{"a":[2]},[],"x"]})", JsonKind::kList, R"(=1 ={"a":[2]} =[] ="x" )", true, true},
        {R"({"before":{"songs":[1]},"songs":[],"after":[{"songs":[2]}]})", JsonKind::kList, "", true, true},
        {R"({"songs":{"a":1,"b":{"c":[2],"d":3},"":null}})", JsonKind::kObject, R"(a=1 b={"c":[2],"d":3} =null )", true,
         true},
        {R"({"songs":[1],"songs":[2]})", JsonKind::kList, "=1 =2 ", true, true},
        {R"({"songs":[1,{"a":2},{"a":)", JsonKind::kList, R"(=1 ={"a":2} )", true, false},
        {R"({"songs":{"a":1}})", JsonKind::kList, "", false, true},
        {R"({"songs":[1]})", JsonKind::kObject, "", false, true},
        {R"({"songs":7})", JsonKind::kList, "", false, true},
        {R"(["songs",[1]])", JsonKind::kList, "", false, true},
        {R"([{"songs":[1]}])", JsonKind::kList, "", false, true},
        {R"({"other":[[1]],"x":{"songs":[1]}})", JsonKind::kList, "", false, true},
        {"7", JsonKind::kList, "", false, true},
        {"", JsonKind::kList, "", false, false},
    };
    for (const auto& row : table) {
        std::string values;
        const auto take = [&values](const std::string& name, const json& value) {
            values += name + '=' + value.dump() + ' ';
            return size_t{0};
        };
        const JsonWalk walk = WalkJson(row.text, "songs", row.kind, take);
        EXPECT_EQ(values, row.values) << row.text;
        EXPECT_EQ(walk.found, row.found) << row.text;
        EXPECT_EQ(walk.error.empty(), row.good) << row.text << walk.error;
    }
}

TEST(Json, WantOfMemoryEndsTheReadingAndNothingElse) {
    const auto starve = [](const std::string&, const json&) -> size_t { throw std::bad_alloc(); };
    EXPECT_EQ(WalkJson(R"({"songs":[1]})", "songs", JsonKind::kList, starve).error, "there is not enough memory");
}

}  // namespace
}  // namespace hullrider
