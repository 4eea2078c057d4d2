// Work off the UI thread. A worker takes values, may be told to stop at any moment, and returns its result by Post
// ("platform/post.h").
#pragma once

#include <chrono>
#include <functional>
#include <stop_token>

namespace hullrider {

// Runs on a thread of its own and owns all that it touches. It checks the token often enough to end within half a
// second. An exception ends it with one line on the error stream.
using WorkerTask = std::function<void(const std::stop_token& stop)>;

// One job at a time. UI thread.
class Worker {
public:
    Worker() = default;
    ~Worker() { Cancel(); }
    Worker(Worker&&) noexcept = default;
    Worker& operator=(Worker&& other) noexcept;

    // Cancels the current job and starts a new one. False when the system has no thread left.
    bool Start(WorkerTask task);

    // Tells the job to stop without waiting for it. Nothing that it has posted runs any more.
    void Cancel() { stop_.request_stop(); }

private:
    std::stop_source stop_{std::nostopstate};
};

// The same for a job that only the end of the program cancels. Any thread.
bool StartWorker(std::function<void()> work);

// At the end of the program: tells every worker to stop, waits for all of them for `longestWait` at most, and drops
// what was posted. A worker that hangs in the system is left behind, and what it posts never runs. UI thread.
void EndWorkers(std::chrono::milliseconds longestWait = std::chrono::seconds(1));

// For tests: from now on Worker::Start runs the job before it returns. Jobs of StartWorker keep their threads.
void RunWorkersInline(bool isInline);

}  // namespace hullrider
