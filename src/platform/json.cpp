#include "platform/json.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>
#include <vector>

namespace hullrider {

namespace {

using Json = nlohmann::json;

constexpr size_t kAlwaysAllowed = size_t{16} << 20;
constexpr size_t kMaxErrorBytes = 1000;

// The cost of a value besides its text: its place in a growing list, or an object's node with its name.
constexpr size_t kListedBytes = 48;
constexpr size_t kNamedBytes = 128;
constexpr size_t kContainerBytes = 48;
constexpr size_t kTextBytes = 48;  // besides its characters

bool EndsToken(char c) {
    return std::string_view(" \t\r\n,:[]{}").find(c) != std::string_view::npos;
}

// Whether some string or number exceeds the parser's limit. A rough scan: the text need not be JSON.
bool HasLongToken(std::string_view text) {
    size_t length = 0;
    bool isString = false;
    for (size_t i = 0; i < text.size() && length <= kLongestJsonToken; ++i) {
        const char c = text[i];
        if (isString ? c == '\\' : EndsToken(c)) {
            length = isString ? length + 2 : 0;
            i += isString ? 1 : 0;
        } else if (c == '"') {
            isString = !isString;
            length = 0;
        } else {
            ++length;
        }
    }
    return length > kLongestJsonToken;
}

// Builds values while the parser runs: the whole text as one tree, or one value after another from a list or object in
// the root. Every function returns whether the parser should go on.
class ValueBuilder final : public nlohmann::json_sax<Json> {
public:
    using Take = std::function<size_t(const std::string& name, Json& value)>;

    // Values at that depth are handed over; those above only lead there.
    ValueBuilder(size_t textBytes, size_t depth, Take take)
        : bounds_(textBytes), valueDepth_(depth), take_(std::move(take)) {}

    void LookFor(std::string_view key, JsonKind kind) {
        wantedKey_ = key;
        wantedKind_ = kind;
    }

    bool Found() const { return found_; }
    const char* Refusal() const { return bounds_.Refusal(); }
    const std::string& ParseError() const { return parseError_; }

    bool null() override { return Scalar(nullptr); }
    bool boolean(bool value) override { return Scalar(value); }
    bool number_integer(int64_t value) override { return Scalar(value); }
    bool number_unsigned(uint64_t value) override { return Scalar(value); }
    bool number_float(double value, const std::string& /*text*/) override { return Scalar(value); }
    bool string(std::string& value) override { return !IsWanted() || (Charge(kTextBytes + value.size()) && Scalar(value)); }
    bool binary(binary_t& /*value*/) override { return true; }

    bool start_object(size_t /*size*/) override { return Start(JsonKind::kObject); }
    bool start_array(size_t /*size*/) override { return Start(JsonKind::kList); }
    bool end_object() override { return End(); }
    bool end_array() override { return End(); }

    bool key(std::string& name) override {
        if (bounds_.Depth() == 1) rootKeyIsWanted_ = name == wantedKey_;
        if (!IsWanted()) return true;
        (open_.empty() ? valueName_ : name_) = name;
        return open_.empty() || Charge(name.size());
    }

    bool parse_error(size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& error) override {
        parseError_ = JsonErrorText(error);
        return false;
    }

private:
    // Whether the current position is inside a value that will be handed over.
    bool IsWanted() const { return valueDepth_ == 0 || isInside_; }

    bool Charge(size_t bytes) {
        charged_ += bytes;
        return bounds_.Take(bytes);
    }

    bool Start(JsonKind kind) {
        const bool isOpened = !IsWanted() ? OpenWay(kind) : OpenValue(kind);
        return isOpened && bounds_.Enter();
    }

    // A container outside of any wanted value: the root, the wanted list or object, or one to skip.
    bool OpenWay(JsonKind kind) {
        if (bounds_.Depth() == 0) rootIsObject_ = kind == JsonKind::kObject;
        isInside_ = bounds_.Depth() == 1 && rootIsObject_ && rootKeyIsWanted_ && kind == wantedKind_;
        found_ = found_ || isInside_;
        return true;
    }

    bool OpenValue(JsonKind kind) {
        if (!Charge(kContainerBytes)) return false;
        Json* const place = Put(kind == JsonKind::kObject ? Json(Json::value_t::object) : Json(Json::value_t::array));
        if (place != nullptr) open_.push_back(place);
        return place != nullptr;
    }

    bool Scalar(Json value) {
        if (!IsWanted()) return true;
        if (Put(std::move(value)) == nullptr) return false;
        if (open_.empty()) HandOver();
        return bounds_.Take(0);
    }

    // The value's place in the tree; null when the limit is reached. No open value moves: only the innermost grows.
    Json* Put(Json value) {
        if (open_.empty()) {
            value_ = std::move(value);
            return &value_;
        }
        Json& around = *open_.back();
        if (!Charge(around.is_array() ? kListedBytes : kNamedBytes)) return nullptr;
        if (!around.is_array()) return &(around[name_] = std::move(value));
        around.push_back(std::move(value));
        return &around.back();
    }

    bool End() {
        bounds_.Leave();
        if (bounds_.Depth() < valueDepth_) {
            isInside_ = false;
            return true;
        }
        if (!IsWanted()) return true;
        open_.pop_back();
        if (open_.empty()) HandOver();
        return bounds_.Take(0);
    }

    void HandOver() {
        const size_t kept = take_(valueName_, value_);
        value_ = nullptr;
        bounds_.Release(std::exchange(charged_, 0));
        bounds_.Take(kept);
    }

    JsonBounds bounds_;
    size_t valueDepth_;
    Take take_;
    std::string_view wantedKey_;
    JsonKind wantedKind_ = JsonKind::kList;

    bool rootIsObject_ = false;
    bool rootKeyIsWanted_ = false;
    bool isInside_ = false;
    bool found_ = false;
    Json value_;               // the value being built
    std::string valueName_;    // empty within a list
    std::string name_;         // the latest one within the value
    std::vector<Json*> open_;  // its open containers, outermost first
    size_t charged_ = 0;       // its memory
    std::string parseError_;
};

std::string WhyItEnded(const ValueBuilder& builder, const std::string& error) {
    if (*builder.Refusal() != '\0') return builder.Refusal();
    return builder.ParseError().empty() ? error : builder.ParseError();
}

}  // namespace

JsonBounds::JsonBounds(size_t textBytes) : most_(std::max(kAlwaysAllowed, textBytes * 3)) {}

bool JsonBounds::Enter() {
    ++depth_;
    if (depth_ > kMostJsonNesting) refusal_ = "it is nested too deeply";
    return *refusal_ == '\0';
}

bool JsonBounds::Take(size_t bytes) {
    taken_ += bytes;
    if (taken_ > most_) refusal_ = "it would take too much memory";
    return *refusal_ == '\0';
}

std::string JsonErrorText(const std::exception& failure) {
    return std::string(failure.what()).substr(0, kMaxErrorBytes);
}

bool RunJsonParser(std::string_view text, nlohmann::json_sax<Json>& handler, std::string& error) {
    error = "it cannot be read";
    if (HasLongToken(text)) {
        error = "a string or number in it is too long";
        return false;
    }
    try {
        const bool isRead = Json::sax_parse(text.begin(), text.end(), &handler);
        if (isRead) error.clear();
        return isRead;
    } catch (const std::bad_alloc&) {
        error = "there is not enough memory";
    } catch (const std::exception& failure) {
        error = JsonErrorText(failure);
    }
    return false;
}

std::optional<Json> ParseJson(std::string_view text, std::string& error) {
    Json root;
    ValueBuilder builder(text.size(), 0, [&root](const std::string& /*name*/, Json& value) {
        root = std::move(value);
        return size_t{0};
    });
    if (RunJsonParser(text, builder, error)) return root;
    error = WhyItEnded(builder, error);
    return std::nullopt;
}

std::optional<Json> ParseJsonObject(std::string_view text, std::string& error) {
    std::optional<Json> root = ParseJson(text, error);
    if (!root || root->is_object()) return root;
    error = "it is not a JSON object";
    return std::nullopt;
}

JsonWalk WalkJson(std::string_view text, std::string_view key, JsonKind kind,
                  const std::function<size_t(const std::string& name, Json& value)>& take) {
    constexpr size_t kDepthOfValues = 2;
    ValueBuilder builder(text.size(), kDepthOfValues, take);
    builder.LookFor(key, kind);
    JsonWalk walk;
    if (!RunJsonParser(text, builder, walk.error)) walk.error = WhyItEnded(builder, walk.error);
    walk.found = builder.Found();
    return walk;
}

std::string QuotedJson(const std::string& text) {
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace hullrider
