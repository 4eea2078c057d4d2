// Reading untrusted JSON. Nesting depth, token length and memory are bounded, so that no file can hang or starve the
// player. Nothing here throws. Callable from any thread.
#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

inline constexpr size_t kMostJsonNesting = 64;
inline constexpr size_t kLongestJsonToken = size_t{1} << 20;  // the parser keeps several copies of a token

// The depth of a reading and the memory it has taken, by a high estimate. The limit is three times the text's size, and
// never less than an amount that is small on any machine.
class JsonBounds {
public:
    explicit JsonBounds(size_t textBytes);

    // False when the reading must end; Refusal says why.
    bool Enter();
    bool Take(size_t bytes);
    void Leave() { --depth_; }
    void Release(size_t bytes) { taken_ -= bytes; }

    size_t Depth() const { return depth_; }
    size_t Taken() const { return taken_; }
    const char* Refusal() const { return refusal_; }  // empty: nothing was refused

private:
    size_t most_;
    size_t taken_ = 0;
    size_t depth_ = 0;
    const char* refusal_ = "";
};

// Runs the parser over the text. False, with one line in `error`, when the text is not JSON or holds too long a token.
// False too when the handler has ended the reading; it knows why.
bool RunJsonParser(std::string_view text, nlohmann::json_sax<nlohmann::json>& handler, std::string& error);

// The parser's message, without the whole text that it quotes.
std::string JsonErrorText(const std::exception& failure);

// The whole text as a tree. Nothing when it cannot be read within the bounds; `error` says why.
std::optional<nlohmann::json> ParseJson(std::string_view text, std::string& error);

// The same for a text whose root must be an object.
std::optional<nlohmann::json> ParseJsonObject(std::string_view text, std::string& error);

enum class JsonKind { kList, kObject };

struct JsonWalk {
    bool found = false;  // the root is an object that holds such a list or object
    std::string error;   // why the reading ended early; the values taken so far stand
};

// Hands over each value of the list or object `key` of the root object as soon as it is read, with its name within an
// object, and then forgets it: a text of any size takes no more memory than its largest value. `take` returns the
// number of bytes that it keeps; they count toward the limit.
JsonWalk WalkJson(std::string_view text, std::string_view key, JsonKind kind,
                  const std::function<size_t(const std::string& name, nlohmann::json& value)>& take);

// The text as a JSON string with its quotes. Bytes that are not UTF-8 become U+FFFD.
std::string QuotedJson(const std::string& text);

}  // namespace hullrider
