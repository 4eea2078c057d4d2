#include "audio/stream_receiver.h"

#include <algorithm>
#include <charconv>
#include <condition_variable>
#include <optional>
#include <utility>

#include "audio/bass.h"
#include "audio/icy_cutter.h"
#include "audio/ogg_parts.h"
#include "platform/charset.h"
#include "platform/console.h"
#include "platform/http.h"
#include "platform/stop_scope.h"
#include "platform/worker.h"

namespace hullrider {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kStallTimeout{15'000};
constexpr milliseconds kFirstDelay{500}, kLongestDelay{30'000};
constexpr uint64_t kSteadyBytes = 256 * 1024;  // a connection that brought these was a good one
constexpr uint64_t kMostInterval = 1 << 20;
constexpr int32_t kNotAllowed = 401, kForbidden = 403, kFirstFailure = 400, kFirstSuccess = 200;
constexpr int kCurlTlsHandshake = 35, kCurlCertificate = 60;

std::string Lowered(std::string_view text) {
    std::string lowered(text);
    for (char& c : lowered) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return lowered;
}

std::string_view WithoutBlanks(std::string_view text) {
    while (text.starts_with(' ') || text.starts_with('\t')) text.remove_prefix(1);
    while (text.ends_with(' ') || text.ends_with('\t')) text.remove_suffix(1);
    return text;
}

std::optional<uint64_t> NumberIn(std::string_view text) {
    uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

// Pages and playlists, which some servers send instead of a stream.
bool IsText(const std::string& contentType) {
    return contentType.starts_with("text/") || contentType.find("mpegurl") != std::string::npos ||
           contentType.find("scpls") != std::string::npos || contentType.find("json") != std::string::npos;
}

int32_t StatusIn(std::string_view line) {
    const size_t at = line.find(' ');
    if (at == std::string_view::npos) return 0;
    return static_cast<int32_t>(NumberIn(line.substr(at + 1, 3)).value_or(0));
}

}  // namespace

// One connection, from its request to its end.
class StreamConnection {
public:
    explicit StreamConnection(StreamReceiver& receiver) : receiver_(receiver) {}

    HttpResponse Receive(const std::stop_token& stop);

    uint64_t Bytes() const { return bytes_; }
    // It was a file of a known length, and all of it has arrived.
    bool IsWholeFile(const HttpResponse& response) const {
        return response.end == HttpEnd::kComplete && length_ && *length_ == bytes_;
    }
    int ErrorOf(const HttpResponse& response) const;
    std::string Reason(const HttpResponse& response) const;

private:
    bool TakeHeader(std::string_view line);
    bool TakeBody(std::string_view bytes);
    bool BeginBody();
    bool TakeSound(std::string_view bytes);
    bool TakeTitle(std::string_view block);

    StreamReceiver& receiver_;
    StreamHeaders headers_;
    int32_t status_ = 0;
    bool isText_ = false, hasBegun_ = false;
    uint64_t interval_ = 0, bytes_ = 0;
    std::optional<uint64_t> length_;
    IcyCutter titles_{0};
    OggParts parts_;
    std::string lastTitle_;
};

HttpResponse StreamConnection::Receive(const std::stop_token& stop) {
    HttpRequest request;
    request.url = receiver_.url_;
    request.userAgent = "Hullrider-Radio/1.1";
    request.headers = {"Icy-MetaData: 1"};
    request.maxBodyBytes = 0;
    request.connectTimeout = receiver_.connectTimeout_;
    request.stallTimeout = kStallTimeout;
    const HttpReceiver receiver{[this](std::string_view line) { return TakeHeader(line); },
                                [this](std::string_view bytes) { return TakeBody(bytes); }};
    return StreamHttp(request, receiver, stop);
}

bool StreamConnection::TakeHeader(std::string_view line) {
    const bool isIcy = line.starts_with("ICY ");
    if (isIcy || line.starts_with("HTTP/")) {  // the answer after a redirect replaces the one before
        headers_ = {isIcy, {}};
        length_.reset();
        interval_ = 0;
        isText_ = false;
        status_ = StatusIn(line);
        return true;
    }
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos) return true;
    const std::string name = Lowered(line.substr(0, colon));
    const std::string_view value = WithoutBlanks(line.substr(colon + 1));
    if (name == "icy-metaint") interval_ = NumberIn(value).value_or(0);
    if (name == "content-length") length_ = NumberIn(value);
    if (name == "content-type") isText_ = IsText(Lowered(value));
    headers_.block += name + ':' + ReadableText(value).value_or("") + '\0';
    return true;
}

bool StreamConnection::BeginBody() {
    hasBegun_ = true;
    if (status_ < kFirstSuccess || status_ >= kFirstFailure || isText_ || interval_ > kMostInterval) return false;
    if (interval_ > 0) length_.reset();
    titles_ = IcyCutter(interval_);
    headers_.block += '\0';
    receiver_.isConnected_ = true;
    receiver_.SetHeaders(headers_);
    return true;
}

bool StreamConnection::TakeBody(std::string_view bytes) {
    if (receiver_.leavesConnection_) return false;
    if (!hasBegun_ && !BeginBody()) return false;
    bytes_ += bytes.size();
    return titles_.Feed(
        bytes, [this](std::string_view sound) { return TakeSound(sound); },
        [this](std::string_view block) { return TakeTitle(block); });
}

bool StreamConnection::TakeSound(std::string_view bytes) {
    StreamBuffer& buffer = receiver_.buffer_;
    return parts_.Feed(
        bytes, [&](std::string_view piece) { return buffer.Append(piece); }, [&] { buffer.AddJoint(); });
}

bool StreamConnection::TakeTitle(std::string_view block) {
    if (block == lastTitle_) return true;
    lastTitle_ = block;
    receiver_.buffer_.AddTitle(ReadableText(block).value_or(""));
    return true;
}

int StreamConnection::ErrorOf(const HttpResponse& response) const {
    if (status_ == kNotAllowed || status_ == kForbidden) return BASS_ERROR_DENIED;
    if (hasBegun_ && isText_) return BASS_ERROR_FILEFORM;
    if (response.end == HttpEnd::kTimedOut) return BASS_ERROR_TIMEOUT;
    if (response.code == kCurlTlsHandshake || response.code == kCurlCertificate) return BASS_ERROR_SSL;
    return BASS_ERROR_FILEOPEN;
}

std::string StreamConnection::Reason(const HttpResponse& response) const {
    if (status_ >= kFirstFailure) return "the server answers with status " + std::to_string(status_);
    if (isText_) return "it is a page or a playlist, not a stream";
    if (receiver_.leavesConnection_) return "it cannot be decoded";
    if (!response.error.empty()) return response.error;
    return "the server has ended it";
}

StreamReceiver::StreamReceiver(std::string url, milliseconds connectTimeout)
    : url_(std::move(url)), connectTimeout_(connectTimeout) {}

bool StreamReceiver::Start() {
    return StartWorker([self = shared_from_this()] {
        const std::stop_callback atEnd(CurrentStopToken(), [&self] { self->Cancel(); });
        self->Run();
    });
}

StreamHeaders StreamReceiver::Headers() const {
    const std::lock_guard lock(mutex_);
    return headers_;
}

void StreamReceiver::SetHeaders(StreamHeaders headers) {
    const std::lock_guard lock(mutex_);
    headers_ = std::move(headers);
}

void StreamReceiver::Reconnect() {
    leavesConnection_ = true;
}

void StreamReceiver::Cancel() {
    stop_.request_stop();  // first, or what follows would look like a failure
    buffer_.Cancel();
}

// False when it is to end.
bool StreamReceiver::WaitToReconnect(milliseconds delay) {
    std::condition_variable_any ended;
    std::mutex mutex;
    std::unique_lock lock(mutex);
    const std::stop_token stop = stop_.get_token();
    ended.wait_for(lock, stop, delay, [] { return false; });
    return !stop.stop_requested();
}

void StreamReceiver::Run() {
    milliseconds delay = kFirstDelay;
    do {
        connections_++;
        StreamConnection connection(*this);
        const HttpResponse response = connection.Receive(stop_.get_token());
        isConnected_ = false;
        if (connection.IsWholeFile(response)) return buffer_.End(BASS_OK);
        if (stop_.stop_requested()) return buffer_.End(BASS_OK);
        if (!keepsConnected_ && connection.Bytes() == 0) {
            PrintErrorLine("Stream " + url_ + ": " + connection.Reason(response));
            return buffer_.End(connection.ErrorOf(response));
        }
        if (connection.Bytes() > kSteadyBytes) delay = kFirstDelay;
        if (delay == kFirstDelay) PrintErrorLine("Lost the stream " + url_ + ": " + connection.Reason(response));
        leavesConnection_ = false;
        buffer_.AddJoint();
        if (!WaitToReconnect(delay)) break;
        delay = std::min(delay * 2, kLongestDelay);
    } while (true);
    buffer_.End(BASS_OK);
}

}  // namespace hullrider
