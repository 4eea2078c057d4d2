// One request in progress, within its limits. On the request's thread.
#pragma once

#include <curl/curl.h>

#include <chrono>
#include <memory>
#include <stop_token>
#include <string_view>

#include "platform/http.h"

namespace hullrider {

using HttpEasy = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;

// Open connections for later requests to reuse. Null inside when memory is short.
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
    // `handle` is set up for the request. All three must outlive the transfer.
    HttpTransfer(const HttpRequest& request, const HttpReceiver& receiver, CURL* handle);

    // The response's headers and body stay empty.
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
