// A web server on this machine whose answers a test writes byte by byte.
#pragma once

#include <atomic>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <string>
#include <thread>

#include "tests/platform/socket.h"

namespace hullrider {

class HttpServer {
public:
    // Sends what it likes in answer to the request, whose head it is given. False closes the connection. On the
    // connection's own thread.
    using Answer = std::function<bool(const Socket& connection, const std::string& request)>;

    // An answer for each path, "/like/this". Any other path closes the connection.
    explicit HttpServer(std::map<std::string, Answer> answers);
    ~HttpServer();  // breaks off what is under way
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    std::string Url(const std::string& path) const;
    int Connections() const { return connections_; }  // that were ever made

    // Always this text.
    static Answer Text(const std::string& text, bool keepsOpen = false);

    // The head, and then the piece again and again until the client has gone.
    static Answer Endless(const std::string& head, const std::string& piece);

    // The text, and then nothing until the client has gone.
    static Answer ThenSilence(const std::string& text);

private:
    struct Client {
        Socket connection;
        std::thread thread;
    };

    void AcceptClients();
    void Serve(Client& client);
    bool AnswerOne(const Socket& connection);

    const std::map<std::string, Answer> answers_;
    const Socket listener_ = Socket::Listen();
    std::atomic<bool> isEnding_{false};
    std::atomic<int> connections_{0};
    std::mutex mutex_;
    std::list<Client> clients_;
    std::thread acceptor_;
};

}  // namespace hullrider
