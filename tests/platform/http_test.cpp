#include "platform/http.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "tests/platform/http_server.h"

namespace hullrider {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

const std::string kOk = "HTTP/1.1 200 OK\r\n";

std::string WithLength(const std::string& body) {
    return kOk + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string RedirectTo(const std::string& place) {
    return "HTTP/1.1 302 Found\r\nLocation: " + place + "\r\nContent-Length: 0\r\n\r\n";
}

HttpRequest Asking(const std::string& url) {
    HttpRequest request;
    request.url = url;
    request.maxBodyBytes = 1000;
    request.maxHeaderBytes = 4000;
    request.stallTimeout = 20s;
    return request;
}

HttpResponse Fetch(const HttpRequest& request) {
    return MakeHttpFetch()(request, {});
}

std::map<std::string, HttpServer::Answer> AnswersOf(const auto& cases) {
    std::map<std::string, HttpServer::Answer> answers;
    for (const auto& test : cases) answers[test.path] = test.answer;
    return answers;
}

const std::string kChunked = "Transfer-Encoding: chunked\r\n\r\n";

TEST(Http, GoodAnswersArriveWhole) {
    struct Case {
        const char* path;
        HttpServer::Answer answer;
        int32_t status;
        std::string body;
        const char* endsAt = nullptr;  // elsewhere
    };
    const std::string again = "HTTP/1.1 301 Moved\r\nLocation: plain\r\n" + kChunked + "3\r\nold\r\n0\r\n\r\n";
    const std::string chunks = kOk + kChunked + "4\r\npart\r\n6;x=1\r\n after\r\n0\r\nT: 1\r\n\r\n";
    const std::string full(1000, 'x'), missing = "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\ngone";
    const Case cases[] = {
        {"/plain", HttpServer::Text(WithLength("a list"), true), 200, "a list"},
        {"/open", HttpServer::Text(kOk + "\r\nuntil the end"), 200, "until the end"},
        {"/chunks", HttpServer::Text(chunks), 200, "part after"},
        {"/empty", HttpServer::Text("HTTP/1.1 204 No Content\r\n\r\n"), 204, ""},
        {"/missing", HttpServer::Text(missing), 404, "gone"},
        {"/continue", HttpServer::Text("HTTP/1.1 100 Continue\r\nA: 1\r\n\r\n" + WithLength("x")), 200, "x"},
        {"/full", HttpServer::Text(WithLength(full)), 200, full},
        {"/again", HttpServer::Text(again), 200, "a list", "/plain"},
        {"/moved", HttpServer::Text(RedirectTo("/again"), true), 200, "a list", "/plain"},
    };
    HttpServer server(AnswersOf(cases));
    for (const Case& test : cases) {
        SCOPED_TRACE(test.path);
        const HttpResponse response = Fetch(Asking(server.Url(test.path)));
        EXPECT_EQ(response.end, HttpEnd::kComplete);
        EXPECT_EQ(response.error, "");
        EXPECT_EQ(response.status, test.status);
        EXPECT_EQ(response.body, test.body);
        EXPECT_EQ(response.url, server.Url(test.endsAt == nullptr ? test.path : test.endsAt));
        ASSERT_FALSE(response.headers.empty());
        EXPECT_TRUE(response.headers[0].starts_with("HTTP/1.1 " + std::to_string(test.status)));
    }
    const std::vector<std::string> ofThePage{"HTTP/1.1 200 OK", "Content-Length: 6"};
    EXPECT_EQ(Fetch(Asking(server.Url("/moved"))).headers, ofThePage);
}

bool BreakOff(const Socket& connection, const std::string&) {
    connection.Send(kOk + "Content-Length: 100\r\n\r\nhalf");
    connection.BreakOnClose();
    return false;
}

TEST(Http, AHostileAnswerEndsInAnErrorWithinItsLimits) {
    struct Case {
        const char* path;
        HttpServer::Answer answer;
        HttpEnd end;
        const char* error;  // null: any
        size_t bodySize = 0;
    };
    const char *const grew = "A value or data field grew larger than allowed", *const large = "Maximum file size exceeded";
    const char* const protocol = "Unsupported protocol";
    const std::string x(1000, 'x'), promise = kOk + "Content-Length: 5000000000\r\n\r\n" + x + x;
    const Case cases[] = {
        {"/circle", HttpServer::Text(RedirectTo("/circle"), true), HttpEnd::kFailed,
         "Number of redirects hit maximum amount"},
        {"/to-file", HttpServer::Text(RedirectTo("file:///etc/hostname")), HttpEnd::kFailed, protocol},
        {"/to-ftp", HttpServer::Text(RedirectTo("ftp://127.0.0.1/list")), HttpEnd::kFailed, protocol},
        {"/headers", HttpServer::Endless(kOk, "X-Filler: x\r\n"), HttpEnd::kTooLarge, grew},
        {"/long-header", HttpServer::Endless(kOk + "X: ", x), HttpEnd::kFailed, nullptr},
        {"/continues", HttpServer::Endless("", "HTTP/1.1 100 Continue\r\n\r\n"), HttpEnd::kTooLarge, grew},
        {"/body", HttpServer::Endless(kOk + "\r\n", std::string(700, 'x')), HttpEnd::kTooLarge, large, 1000},
        {"/chunks", HttpServer::Endless(kOk + kChunked, "1\r\nx\r\n"), HttpEnd::kTooLarge, large, 1000},
        {"/promised", HttpServer::ThenSilence(promise), HttpEnd::kTooLarge, large, 1000},
        {"/short", HttpServer::Text(kOk + "Content-Length: 100\r\n\r\nhalf"), HttpEnd::kFailed,
         "Transferred a partial file", 4},
        {"/bad-chunk", HttpServer::Text(kOk + kChunked + "zz\r\nx\r\n"), HttpEnd::kFailed, nullptr},
        {"/nothing", HttpServer::Text(""), HttpEnd::kFailed, "Server returned nothing (no headers, no data)"},
        {"/no-status", HttpServer::Text("no web server at all\r\n\r\n"), HttpEnd::kFailed, protocol},
        {"/icy", HttpServer::Text("ICY 200 OK\r\n\r\nmusic"), HttpEnd::kFailed, protocol},
    };
    std::map<std::string, HttpServer::Answer> answers = AnswersOf(cases);
    answers["/broken"] = BreakOff;
    HttpServer server(std::move(answers));
    for (const Case& test : cases) {
        SCOPED_TRACE(test.path);
        const HttpResponse response = Fetch(Asking(server.Url(test.path)));
        EXPECT_EQ(response.end, test.end) << response.error;
        EXPECT_NE(response.code, 0);
        EXPECT_EQ(response.error, test.error == nullptr ? response.error : test.error);
        EXPECT_EQ(response.body.size(), test.bodySize);
    }
    // How much has arrived before the break is the system's affair.
    EXPECT_EQ(Fetch(Asking(server.Url("/broken"))).end, HttpEnd::kFailed);
}

TEST(Http, WhatCannotBeAskedForIsRefusedUnsent) {
    HttpServer server({{"/", HttpServer::Text(WithLength("x"))}});
    for (const std::string url : {"file:///etc/hostname", "ftp://127.0.0.1/", "data:,x", "", "http://", "//",
                                  "http://127.0.0.1:99999/", "gopher://127.0.0.1/", "dict://127.0.0.1/"}) {
        SCOPED_TRACE(url);
        const HttpResponse response = Fetch(Asking(url));
        EXPECT_EQ(response.end, HttpEnd::kFailed);
        EXPECT_NE(response.error, "");
    }
    HttpRequest split = Asking(server.Url("/"));
    split.headers = {"X: 1\r\nY: 2"};
    EXPECT_EQ(Fetch(split).end, HttpEnd::kFailed);
    EXPECT_EQ(Fetch(Asking(server.Url("/") + std::string(" HTTP/1.1\r\nY: 2\r\n"))).end, HttpEnd::kFailed);
    EXPECT_EQ(Fetch(Asking(server.Url("/") + std::string("\0x", 2))).end, HttpEnd::kFailed);
    EXPECT_EQ(server.Connections(), 0);
}

TEST(Http, ARequestIsSentAsAskedAndConnectionsAreKept) {
    std::string request;
    HttpServer server({{"/", [&](const Socket& connection, const std::string& head) {
                            request = head;
                            return connection.Send(head.starts_with("HEAD ") ? kOk + "Content-Length: 9\r\n\r\n"
                                                                             : WithLength("x"));
                        }}});
    const HttpFetch fetch = MakeHttpFetch();
    HttpRequest asking = Asking(server.Url("/"));
    EXPECT_EQ(fetch(asking, {}).body, "x");
    EXPECT_EQ(request.find("User-Agent:"), std::string::npos);

    asking.isHead = true;
    asking.userAgent = "player/1.0";
    asking.headers = {"Cache-Control: no-cache", "Icy-MetaData: 1"};
    const HttpResponse head = fetch(asking, {});
    EXPECT_EQ(head.status, 200);
    EXPECT_EQ(head.body, "");
    EXPECT_EQ(head.headers.at(1), "Content-Length: 9");
    for (const char* line : {"HEAD / ", "\r\nUser-Agent: player/1.0\r\n", "\r\nCache-Control: no-cache\r\n",
                             "\r\nIcy-MetaData: 1\r\n"}) {
        EXPECT_NE(request.find(line), std::string::npos) << line;
    }
    EXPECT_EQ(server.Connections(), 1);
}

TEST(Http, AServerThatSendsNothingMoreTimesOutAndASlowOneDoesNot) {
    HttpServer server({
        {"/silent", HttpServer::ThenSilence("")},
        {"/no-body", HttpServer::ThenSilence(kOk + "Content-Length: 5\r\n\r\n")},
        {"/half-header", HttpServer::ThenSilence(kOk + "Content-Le")},
        {"/no-end-of-redirect", HttpServer::Endless("HTTP/1.1 302 Found\r\nLocation: /slow\r\n\r\n", "here")},
        {"/slow", [](const Socket& connection, const std::string&) {
             connection.Send(kOk + "Content-Length: 6\r\n\r\n");
             for (const char letter : {'s', 'l', 'o', 'w', 'l', 'y'}) {
                 if (connection.IsReadable(400ms) || !connection.Send({&letter, 1})) return false;
             }
             return false;
         }},
    });
    for (const char* path : {"/silent", "/no-body", "/half-header", "/no-end-of-redirect"}) {
        SCOPED_TRACE(path);
        HttpRequest asking = Asking(server.Url(path));
        asking.stallTimeout = 200ms;
        const auto before = Clock::now();
        const HttpResponse response = Fetch(asking);
        EXPECT_GE(Clock::now() - before, 200ms);
        EXPECT_LT(Clock::now() - before, 10s);
        EXPECT_EQ(response.end, HttpEnd::kTimedOut);
        EXPECT_EQ(response.error, "Timeout was reached");
    }
    HttpRequest asking = Asking(server.Url("/slow"));
    asking.stallTimeout = 2s;  // it takes longer than that as a whole
    EXPECT_EQ(Fetch(asking).body, "slowly");
    asking.wholeTimeout = 600ms;
    const HttpResponse response = Fetch(asking);
    EXPECT_EQ(response.end, HttpEnd::kTimedOut);
    EXPECT_EQ(response.body.size(), 1U);
}

TEST(Http, ARequestIsCanceledAtOnceWhereverItIs) {
    HttpServer server({{"/silent", HttpServer::ThenSilence("")},
                       {"/endless", HttpServer::Endless(kOk + "\r\n", "x")},
                       {"/stops", HttpServer::ThenSilence(kOk + "\r\nx")}});
    for (const char* path : {"/silent", "/endless", "/stops"}) {
        SCOPED_TRACE(path);
        HttpRequest asking = Asking(server.Url(path));
        asking.maxBodyBytes = 0;
        std::stop_source stop;
        HttpResponse response;
        const int connectionsBefore = server.Connections();
        std::thread thread([&] { response = MakeHttpFetch()(asking, stop.get_token()); });
        while (server.Connections() == connectionsBefore) std::this_thread::yield();
        const auto before = Clock::now();
        stop.request_stop();
        thread.join();
        EXPECT_LT(Clock::now() - before, 700ms);
        EXPECT_EQ(response.end, HttpEnd::kCanceled);
    }
    std::stop_source stop;
    stop.request_stop();
    const int before = server.Connections();
    EXPECT_EQ(MakeHttpFetch()(Asking(server.Url("/stops")), stop.get_token()).end, HttpEnd::kCanceled);
    EXPECT_EQ(server.Connections(), before);
}

struct Heard {
    std::vector<std::string> headers;
    std::string body;
    HttpResponse response;
};

Heard Stream(const std::string& url, size_t enough = 1'000'000) {
    Heard heard;
    const HttpReceiver receiver{[&](std::string_view line) {
                                    heard.headers.emplace_back(line);
                                    return true;
                                },
                                [&](std::string_view bytes) {
                                    heard.body += bytes;
                                    return heard.body.size() < enough;
                                }};
    HttpRequest asking = Asking(url);
    asking.maxBodyBytes = 0;
    heard.response = StreamHttp(asking, receiver, {});
    return heard;
}

TEST(Http, AStreamComesAsItArrivesAndWithTheStatusLineOfOldServersToo) {
    const std::string icy = "ICY 200 OK\r\nicy-name: Night Line\r\nicy-metaint: 16000\r\n\r\n";
    HttpServer server({{"/icy", HttpServer::Text(icy + "music")},
                       {"/endless", HttpServer::Endless(icy, "music")},
                       {"/moved", HttpServer::Text(RedirectTo("/icy"), true)},
                       {"/refused", HttpServer::Text("ICY 401 Service Unavailable\r\n\r\n")}});
    const Heard whole = Stream(server.Url("/icy"));
    EXPECT_EQ(whole.response.end, HttpEnd::kComplete);
    EXPECT_EQ(whole.response.status, 200);
    EXPECT_EQ(whole.headers, (std::vector<std::string>{"ICY 200 OK", "icy-name: Night Line", "icy-metaint: 16000"}));
    EXPECT_EQ(whole.body, "music");

    const Heard moved = Stream(server.Url("/moved"));
    EXPECT_EQ(moved.headers.at(0), "HTTP/1.1 302 Found");
    EXPECT_EQ(moved.headers.at(3), "ICY 200 OK");
    EXPECT_EQ(moved.response.url, server.Url("/icy"));

    const Heard endless = Stream(server.Url("/endless"), 5000);
    EXPECT_EQ(endless.response.end, HttpEnd::kRefused);
    EXPECT_GE(endless.body.size(), 5000U);
    EXPECT_EQ(Stream(server.Url("/refused")).response.end, HttpEnd::kFailed);
}

}  // namespace
}  // namespace hullrider
