#include "platform/http_transfer.h"

#include <algorithm>

namespace hullrider {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kLongestWait{1000};

void PrepareCurlOnce() {
    static const CURLcode prepared = curl_global_init(CURL_GLOBAL_DEFAULT);
    static_cast<void>(prepared);
}

HttpEnd EndOf(CURLcode code) {
    switch (code) {
        case CURLE_OK:
            return HttpEnd::kComplete;
        case CURLE_OPERATION_TIMEDOUT:
            return HttpEnd::kTimedOut;
        default:
            return HttpEnd::kFailed;
    }
}

std::string_view WithoutLineEnd(std::string_view line) {
    while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

}  // namespace

HttpConnections::HttpConnections() {
    PrepareCurlOnce();
    multi_ = curl_multi_init();
}

HttpConnections::~HttpConnections() {
    curl_multi_cleanup(multi_);
}

bool IsStatusLine(std::string_view line) {
    return line.starts_with("HTTP/") || line.starts_with("ICY ");
}

HttpTransfer::HttpTransfer(const HttpRequest& request, const HttpReceiver& receiver, CURL* handle)
    : request_(request), receiver_(receiver), handle_(handle), lastArrival_(Clock::now()) {
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, OnHeader);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, OnBody);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, this);
}

size_t HttpTransfer::OnHeader(char* bytes, size_t size, size_t count, void* transfer) {
    const bool isWanted = static_cast<HttpTransfer*>(transfer)->TakeHeader({bytes, size * count});
    return isWanted ? size * count : CURL_WRITEFUNC_ERROR;
}

size_t HttpTransfer::OnBody(char* bytes, size_t size, size_t count, void* transfer) {
    const bool isWanted = static_cast<HttpTransfer*>(transfer)->TakeBody({bytes, size * count});
    return isWanted ? size * count : CURL_WRITEFUNC_ERROR;
}

bool HttpTransfer::TakeHeader(std::string_view line) {
    headerBytes_ += line.size();
    const std::string_view text = WithoutLineEnd(line);
    if (headerBytes_ > request_.maxHeaderBytes) {
        End(HttpEnd::kTooLarge, CURLE_TOO_LARGE);
    } else if (!text.empty() && receiver_.onHeader && !receiver_.onHeader(text)) {
        End(HttpEnd::kRefused, CURLE_WRITE_ERROR);
    }
    lastArrival_ = Clock::now();
    return !isOver_;
}

bool HttpTransfer::TakeBody(std::string_view bytes) {
    const size_t left = request_.maxBodyBytes - std::min(request_.maxBodyBytes, bodyBytes_);
    const bool isTooLong = request_.maxBodyBytes != 0 && bytes.size() > left;
    if (isTooLong) bytes = bytes.substr(0, left);
    bodyBytes_ += bytes.size();
    if (!bytes.empty() && receiver_.onBody && !receiver_.onBody(bytes)) {
        End(HttpEnd::kRefused, CURLE_WRITE_ERROR);
    } else if (isTooLong) {
        End(HttpEnd::kTooLarge, CURLE_FILESIZE_EXCEEDED);
    }
    lastArrival_ = Clock::now();  // the receiver's time does not count against the server
    return !isOver_;
}

HttpResponse HttpTransfer::Run(const HttpConnections& connections, const std::stop_token& stop) {
    CURLM* const multi = connections.Get();
    if (multi == nullptr || curl_multi_add_handle(multi, handle_) != CURLM_OK) {
        End(HttpEnd::kFailed, CURLE_FAILED_INIT);
        return Answer();
    }
    Drive(multi, stop);
    const HttpResponse answer = Answer();
    curl_multi_remove_handle(multi, handle_);
    return answer;
}

void HttpTransfer::Drive(CURLM* multi, const std::stop_token& stop) {
    const std::stop_callback wakeUp(stop, [multi] { curl_multi_wakeup(multi); });
    while (!IsToEnd(stop) && !StepOver(multi)) {
        const auto left = std::chrono::ceil<milliseconds>(lastArrival_ + request_.stallTimeout - Clock::now());
        const milliseconds wait = std::clamp(left, milliseconds(0), kLongestWait);
        curl_multi_poll(multi, nullptr, 0, static_cast<int>(wait.count()), nullptr);
    }
}

// True when the transfer is over.
bool HttpTransfer::StepOver(CURLM* multi) {
    int running = 0;
    if (curl_multi_perform(multi, &running) != CURLM_OK) End(HttpEnd::kFailed, CURLE_OUT_OF_MEMORY);
    int messages = 0;
    while (const CURLMsg* const message = curl_multi_info_read(multi, &messages)) {
        if (message->msg == CURLMSG_DONE) End(EndOf(message->data.result), message->data.result);
    }
    return isOver_;
}

bool HttpTransfer::IsToEnd(const std::stop_token& stop) {
    if (stop.stop_requested()) {
        End(HttpEnd::kCanceled, CURLE_ABORTED_BY_CALLBACK);
    } else if (Clock::now() - lastArrival_ >= request_.stallTimeout) {
        End(HttpEnd::kTimedOut, CURLE_OPERATION_TIMEDOUT);
    }
    return isOver_;
}

// The first reason stays; what libcurl reports later is only its consequence.
void HttpTransfer::End(HttpEnd end, CURLcode code) {
    if (isOver_) return;
    isOver_ = true;
    end_ = end;
    code_ = code;
}

HttpResponse HttpTransfer::Answer() const {
    HttpResponse answer;
    answer.end = end_;
    answer.code = code_;
    if (code_ != CURLE_OK) answer.error = curl_easy_strerror(code_);
    long status = 0;
    curl_easy_getinfo(handle_, CURLINFO_RESPONSE_CODE, &status);
    answer.status = static_cast<int32_t>(status);
    const char* url = nullptr;
    curl_easy_getinfo(handle_, CURLINFO_EFFECTIVE_URL, &url);
    answer.url = url == nullptr ? request_.url : url;
    return answer;
}

}  // namespace hullrider
