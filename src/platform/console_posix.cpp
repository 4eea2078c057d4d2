#include "platform/console.h"

#include <pthread.h>
#include <signal.h>

#include <cstdio>
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

}  // namespace

void PrintLine(std::string_view text) {
    WriteLine(stdout, text);
}
void PrintErrorLine(std::string_view text) {
    WriteLine(stderr, text);
}

void AttachParentConsole() {}
void ReleaseConsole() {}

// The signals are blocked for every thread started from now on and waited for on one of our own, so that the handler
// runs as ordinary code and not inside a signal. A second signal ends the program at once.
void OnInterrupt(void (*handler)()) {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread([signals, handler] {
        int received = 0;
        sigwait(&signals, &received);
        handler();
        sigwait(&signals, &received);
        std::_Exit(128 + received);
    }).detach();
}

}  // namespace hullrider
