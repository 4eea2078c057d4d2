#include "bench/process_load.h"

#include <unistd.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace hullrider {

namespace {

struct Totals {
    double cpuMs = 0.0;
    uint64_t wakeUps = 0;
};

double MsOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

uint64_t WakeUpsOf(const std::filesystem::path& task) {
    const std::string wanted = "voluntary_ctxt_switches:";
    std::ifstream status(task / "status");
    std::string word;
    uint64_t count = 0;
    while (status >> word) {
        if (word == wanted) status >> count;
    }
    return count;
}

Totals OfTheOthers() {
    Totals totals{MsOf(CLOCK_PROCESS_CPUTIME_ID) - MsOf(CLOCK_THREAD_CPUTIME_ID), 0};
    const std::string self = std::to_string(gettid());
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        if (task.path().filename() != self) totals.wakeUps += WakeUpsOf(task.path());
    }
    return totals;
}

}  // namespace

ProcessLoad MeasureLoad(double seconds, const std::function<void()>& meanwhile) {
    const auto begin = std::chrono::steady_clock::now();
    const Totals before = OfTheOthers();
    if (meanwhile) meanwhile();
    std::this_thread::sleep_until(begin + std::chrono::duration<double>(seconds));
    const Totals after = OfTheOthers();
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    return {(after.cpuMs - before.cpuMs) / passed.count(),
            static_cast<double>(after.wakeUps - before.wakeUps) / passed.count()};
}

}  // namespace hullrider
