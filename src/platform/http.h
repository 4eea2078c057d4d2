// The only access to the network: http and https, after redirects too. Not on the UI thread, because a request takes as
// long as the server likes, within the caller's limits.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace hullrider {

struct HttpRequest {
    std::string url;  // without a scheme, http
    bool isHead = false;
    std::string userAgent;             // empty: none is sent
    std::vector<std::string> headers;  // additional ones, as "Name: value"
    int32_t maxRedirects = 10;

    size_t maxBodyBytes = 1 << 20;    // 0: no limit
    size_t maxHeaderBytes = 1 << 16;  // of all responses together, including redirects
    std::chrono::milliseconds connectTimeout{10'000};
    std::chrono::milliseconds stallTimeout{20'000};  // the longest time in which nothing arrives
    std::chrono::milliseconds wholeTimeout{0};       // 0: none
};

enum class HttpEnd {
    kComplete,  // whatever the status
    kCanceled,
    kTimedOut,
    kTooLarge,
    kRefused,  // by the receiver of the data
    kFailed,
};

struct HttpResponse {
    HttpEnd end = HttpEnd::kFailed;
    int32_t code = 0;                  // libcurl's; 0 when complete
    std::string error;                 // libcurl's text for the code; empty when complete
    int32_t status = 0;                // 0 until a status line arrives
    std::string url;                   // of the last redirect
    std::vector<std::string> headers;  // lines of the last response, its status line first
    std::string body;                  // what has arrived, even before a failure
};

// Users of the network are handed this function, so that a test can answer instead. Returns soon after `stop` is
// requested.
using HttpFetch = std::function<HttpResponse(const HttpRequest& request, const std::stop_token& stop)>;

// Keeps connections open between calls. One thread at a time.
HttpFetch MakeHttpFetch();

// Receives a stream's data as it arrives. Returning false ends the stream; both functions may take their time.
struct HttpReceiver {
    std::function<bool(std::string_view line)> onHeader;  // without its end; a status line begins a new response
    std::function<bool(std::string_view bytes)> onBody;
};

// Receives a stream that may never end: `headers` and `body` of the response stay empty. Accepts the status line "ICY
// 200 OK" of old stream servers. The receiver is called on the calling thread.
HttpResponse StreamHttp(const HttpRequest& request, const HttpReceiver& receiver, const std::stop_token& stop);

// The text as a part of a URL: all but unreserved characters as %XX. Empty when there is no memory for it.
std::string EscapeForUrl(const std::string& text);

}  // namespace hullrider
