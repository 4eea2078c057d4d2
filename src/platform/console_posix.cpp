#include "platform/console.h"

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <iterator>
#include <string>
#include <thread>

namespace hullrider {

namespace {

void WriteLine(std::FILE* stream, std::string_view text) {
    std::string line(text);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stream);
    std::fflush(stream);
}

// A byte in it ends the wait for a line. Never closed, because other threads may still write to it.
struct WakePipe {
    int readEnd = -1, writeEnd = -1;

    WakePipe() {
        int ends[2];
        if (pipe(ends) != 0) return;
        for (const int end : ends) {
            fcntl(end, F_SETFL, O_NONBLOCK);  // a full pipe already holds a wake-up
            fcntl(end, F_SETFD, FD_CLOEXEC);
        }
        readEnd = ends[0];
        writeEnd = ends[1];
    }
};

const WakePipe& TheWakePipe() {
    static const WakePipe wakePipe;
    return wakePipe;
}

void EmptyWakePipe() {
    std::array<char, 64> bytes;
    while (read(TheWakePipe().readEnd, bytes.data(), bytes.size()) > 0) {
    }
}

}  // namespace

void PrintLine(std::string_view text) {
    WriteLine(stdout, text);
}
void PrintErrorLine(std::string_view text) {
    WriteLine(stderr, text);
}

void AttachParentConsole() {}
void ReleaseConsole() {}

// The signals are blocked for every thread started from now on, and a thread of our own waits for them, so that the
// handler runs as ordinary code. A second signal ends the program at once.
void OnInterrupt(void (*handler)()) {
    signal(SIGPIPE, SIG_IGN);  // a closed pipe on our output must not end the music
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        sigaction(number, nullptr, &before);
        if (before.sa_handler != SIG_IGN) sigaddset(&signals, number);  // nohup and shells have some ignored
    }
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread([signals, handler] {
        int received = 0;
        sigwait(&signals, &received);
        handler();
        sigwait(&signals, &received);
        std::_Exit(128 + received);
    }).detach();
}

std::optional<std::string> ConsoleInput::WaitForLine(std::chrono::milliseconds timeout) {
    const size_t end = pending_.find('\n');
    if (end != std::string::npos) {
        std::string line = pending_.substr(0, end);
        pending_.erase(0, end + 1);
        if (line.ends_with('\r')) line.pop_back();
        return line;
    }
    pollfd events[] = {{ended_ ? -1 : STDIN_FILENO, POLLIN, 0}, {TheWakePipe().readEnd, POLLIN, 0}};
    if (poll(events, std::size(events), static_cast<int>(timeout.count())) <= 0) return std::nullopt;
    if (events[1].revents != 0) EmptyWakePipe();
    if (events[0].revents != 0) Read();
    return std::nullopt;
}

void ConsoleInput::EndWait() {
    const char byte = 0;
    // A full pipe already holds a wake-up.
    if (write(TheWakePipe().writeEnd, &byte, 1) < 0) return;
}

void ConsoleInput::Read() {
    std::array<char, 4096> buffer;
    const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count <= 0) {
        ended_ = true;
    } else {
        pending_.append(buffer.data(), static_cast<size_t>(count));
    }
    if (pending_.size() > kLongestLine) pending_.clear();
}

}  // namespace hullrider
