// The one way out to the network: http and https, after redirects too. Any thread but the UI thread, because a request
// lasts as long as the server likes, within the limits that the caller sets.
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
    std::string url;  // without a scheme it is taken as http
    bool isHead = false;
    std::string userAgent;             // empty: none is sent
    std::vector<std::string> headers;  // to send besides, as "Name: value"
    int32_t maxRedirects = 10;

    size_t maxBodyBytes = 1 << 20;    // 0: as many as come
    size_t maxHeaderBytes = 1 << 16;  // of all responses together, those that redirect included
    std::chrono::milliseconds connectTimeout{10'000};
    std::chrono::milliseconds stallTimeout{20'000};  // the longest time in which nothing arrives
    std::chrono::milliseconds wholeTimeout{0};       // 0: none
};

enum class HttpEnd {
    kComplete,  // whatever the status says
    kCanceled,
    kTimedOut,
    kTooLarge,
    kRefused,  // by the receiver of the data
    kFailed,
};

struct HttpResponse {
    HttpEnd end = HttpEnd::kFailed;
    int32_t code = 0;                  // of libcurl; 0 when complete
    std::string error;                 // libcurl's text for the code; empty when complete
    int32_t status = 0;                // 0 before a status line has arrived
    std::string url;                   // of the last redirect
    std::vector<std::string> headers;  // lines of the last response, its status line first
    std::string body;                  // what has arrived, also before a failure
};

// What users of the network are handed, so that a test can answer in the network's place. Ends soon after `stop` is
// requested.
using HttpFetch = std::function<HttpResponse(const HttpRequest& request, const std::stop_token& stop)>;

// Keeps connections open from one call to the next. One thread at a time.
HttpFetch MakeHttpFetch();

// Where a stream's data goes while it arrives. What returns false ends the stream; both may take their time.
struct HttpReceiver {
    std::function<bool(std::string_view line)> onHeader;  // without its end; a status line begins another response
    std::function<bool(std::string_view bytes)> onBody;
};

// Receives a stream that may never end: `headers` and `body` of the answer stay empty. The status line "ICY 200 OK" of
// old stream servers is taken too. The receiver is called on the calling thread.
HttpResponse StreamHttp(const HttpRequest& request, const HttpReceiver& receiver, const std::stop_token& stop);

}  // namespace hullrider
