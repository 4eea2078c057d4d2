#include "tests/platform/http_server.h"

#include <utility>

namespace hullrider {

HttpServer::HttpServer(std::map<std::string, Answer> answers)
    : answers_(std::move(answers)), acceptor_([this] { AcceptClients(); }) {}

HttpServer::~HttpServer() {
    isEnding_ = true;
    acceptor_.join();
    {
        const std::lock_guard lock(mutex_);
        for (const Client& client : clients_) client.connection.Shutdown();
    }
    for (Client& client : clients_) client.thread.join();
}

std::string HttpServer::Url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(listener_.Port()) + path;
}

HttpServer::Answer HttpServer::Text(const std::string& text, bool keepsOpen) {
    return [=](const Socket& connection, const std::string&) { return connection.Send(text) && keepsOpen; };
}

HttpServer::Answer HttpServer::Endless(const std::string& head, const std::string& piece) {
    return [=](const Socket& connection, const std::string&) {
        bool isThere = connection.Send(head);
        while (isThere) isThere = connection.Send(piece);
        return false;
    };
}

HttpServer::Answer HttpServer::ThenSilence(const std::string& text) {
    return [=](const Socket& connection, const std::string&) {
        if (connection.Send(text)) connection.Receive();
        return false;
    };
}

void HttpServer::AcceptClients() {
    while (!isEnding_) {
        if (!listener_.IsReadable(std::chrono::milliseconds(20))) continue;
        std::optional<Socket> connection = listener_.Accept();
        if (!connection) continue;
        ++connections_;
        const std::lock_guard lock(mutex_);
        Client& client = clients_.emplace_back();
        client.connection = std::move(*connection);
        client.thread = std::thread([this, &client] { Serve(client); });
    }
}

void HttpServer::Serve(Client& client) {
    while (AnswerOne(client.connection)) {
    }
    const std::lock_guard lock(mutex_);
    client.connection = Socket();
}

bool HttpServer::AnswerOne(const Socket& connection) {
    std::string request;
    while (request.find("\r\n\r\n") == std::string::npos) {
        const std::string more = connection.Receive();
        if (more.empty()) return false;
        request += more;
    }
    const size_t begin = request.find(' ') + 1;
    const auto answer = answers_.find(request.substr(begin, request.find(' ', begin) - begin));
    return answer != answers_.end() && answer->second(connection, request);
}

}  // namespace hullrider
