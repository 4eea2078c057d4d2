#include "platform/http.h"

#include <curl/curl.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "platform/http_transfer.h"

namespace hullrider {

namespace {

constexpr long kKeepAliveIdleSec = 30;
constexpr long kKeepAliveStepSec = 15;

using List = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

List MakeList(const std::vector<std::string>& lines) {
    List list(nullptr, curl_slist_free_all);
    for (const std::string& line : lines) {
        curl_slist* const longer = curl_slist_append(list.get(), line.c_str());
        if (longer == nullptr) break;
        static_cast<void>(list.release());
        list.reset(longer);
    }
    return list;
}

// A line end inside would begin another header.
bool IsOneLine(const std::string& text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos;
}

bool CanBeSent(const HttpRequest& request) {
    return IsOneLine(request.url) && IsOneLine(request.userAgent) && std::ranges::all_of(request.headers, IsOneLine);
}

void SetLimits(CURL* handle, const HttpRequest& request) {
    curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle, CURLOPT_DEFAULT_PROTOCOL, "http");
    curl_easy_setopt(handle, CURLOPT_HTTP09_ALLOWED, 0L);
    curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(handle, CURLOPT_MAXREDIRS, static_cast<long>(request.maxRedirects));
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(request.connectTimeout.count()));
    curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(request.wholeTimeout.count()));
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);    // signals affect the whole process
    curl_easy_setopt(handle, CURLOPT_QUICK_EXIT, 1L);  // or canceling would wait for a name server that does not answer
}

void Ask(CURL* handle, const HttpRequest& request, const List& headers) {
    SetLimits(handle, request);
    curl_easy_setopt(handle, CURLOPT_URL, request.url.c_str());
    curl_easy_setopt(handle, CURLOPT_NOBODY, request.isHead ? 1L : 0L);
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(handle, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);  // a proxy's answer is not the server's
    if (!request.userAgent.empty()) curl_easy_setopt(handle, CURLOPT_USERAGENT, request.userAgent.c_str());
}

HttpResponse Refuse(CURLcode code) {
    HttpResponse response;
    response.code = code;
    response.error = curl_easy_strerror(code);
    return response;
}

HttpResponse Collect(HttpConnections& connections, const HttpRequest& request, const std::stop_token& stop) {
    const HttpEasy handle(curl_easy_init(), curl_easy_cleanup);
    if (handle == nullptr) return Refuse(CURLE_FAILED_INIT);
    if (!CanBeSent(request)) return Refuse(CURLE_URL_MALFORMAT);
    const List headers = MakeList(request.headers);
    Ask(handle.get(), request, headers);
    std::vector<std::string> lines;
    std::string body;
    const HttpReceiver receiver{[&](std::string_view line) {
                                    if (IsStatusLine(line)) lines.clear();
                                    lines.emplace_back(line);
                                    return true;
                                },
                                [&](std::string_view bytes) {
                                    body += bytes;
                                    return true;
                                }};
    HttpResponse response = HttpTransfer(request, receiver, handle.get()).Run(connections, stop);
    response.headers = std::move(lines);
    response.body = std::move(body);
    return response;
}

}  // namespace

HttpFetch MakeHttpFetch() {
    // Created with the first request: until then libcurl and the system's TLS take no memory.
    return [kept = std::make_shared<std::optional<HttpConnections>>()](const HttpRequest& request,
                                                                       const std::stop_token& stop) {
        if (!*kept) kept->emplace();
        return Collect(**kept, request, stop);
    };
}

HttpResponse StreamHttp(const HttpRequest& request, const HttpReceiver& receiver, const std::stop_token& stop) {
    HttpConnections connections;
    const HttpEasy handle(curl_easy_init(), curl_easy_cleanup);
    if (handle == nullptr) return Refuse(CURLE_FAILED_INIT);
    if (!CanBeSent(request)) return Refuse(CURLE_URL_MALFORMAT);
    const List headers = MakeList(request.headers);
    const List aliases = MakeList({"ICY 200 OK"});
    Ask(handle.get(), request, headers);
    curl_easy_setopt(handle.get(), CURLOPT_HTTP200ALIASES, aliases.get());
    curl_easy_setopt(handle.get(), CURLOPT_TCP_KEEPALIVE, 1L);
    curl_easy_setopt(handle.get(), CURLOPT_TCP_KEEPIDLE, kKeepAliveIdleSec);
    curl_easy_setopt(handle.get(), CURLOPT_TCP_KEEPINTVL, kKeepAliveStepSec);
    return HttpTransfer(request, receiver, handle.get()).Run(connections, stop);
}

std::string EscapeForUrl(const std::string& text) {
    const std::unique_ptr<char, decltype(&curl_free)> escaped(
        curl_easy_escape(nullptr, text.c_str(), static_cast<int>(text.size())), curl_free);
    return escaped ? std::string(escaped.get()) : std::string();
}

}  // namespace hullrider
