// One request on its way, within its limits. The thread of the request.
#pragma once

#include <curl/curl.h>

#include <chrono>
#include <memory>
#include <stop_token>
#include <string_view>

#include "platform/http.h"

namespace hullrider {

using HttpEasy = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;

// Open connections, which a next request may use. Null within when memory is short.
class HttpConnections {
public:
    HttpConnections();
    ~HttpConnections();
    HttpConnections(const HttpConnections&) = delete;
    HttpConnections& operator=(const HttpConnections&) = delete;

    CURLM* Get() const { return multi_; }

private:
    CURLM* multi_ = nullptr;
};

// "HTTP/1.1 200 OK" or "ICY 200 OK".
bool IsStatusLine(std::string_view line);

class HttpTransfer {
public:
    // On a handle that knows what to ask for. All must outlive it.
    HttpTransfer(const HttpRequest& request, const HttpReceiver& receiver, CURL* handle);

    // Neither the headers nor the body of the answer are filled.
    HttpResponse Run(const HttpConnections& connections, const std::stop_token& stop);

private:
    static size_t OnHeader(char* bytes, size_t size, size_t count, void* transfer);
    static size_t OnBody(char* bytes, size_t size, size_t count, void* transfer);
    bool TakeHeader(std::string_view line);
    bool TakeBody(std::string_view bytes);

    void Drive(CURLM* multi, const std::stop_token& stop);
    bool StepOver(CURLM* multi);
    bool IsToEnd(const std::stop_token& stop);
    void End(HttpEnd end, CURLcode code);
    HttpResponse Answer() const;

    const HttpRequest& request_;
    const HttpReceiver& receiver_;
    CURL* const handle_;
    size_t headerBytes_ = 0, bodyBytes_ = 0;
    std::chrono::steady_clock::time_point lastArrival_;
    bool isOver_ = false;
    HttpEnd end_ = HttpEnd::kFailed;
    CURLcode code_ = CURLE_OK;
};

}  // namespace hullrider
