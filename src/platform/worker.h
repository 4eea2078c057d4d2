// Work beside the UI thread. A worker takes values, may be told to stop at any moment, and hands its result back by
// Post ("platform/post.h").
#pragma once

#include <chrono>
#include <functional>
#include <stop_token>

namespace hullrider {

// Runs on a thread of its own and owns all that it touches. It should look at the token often enough to end within half
// a second. An exception ends it with one line on the error stream.
using WorkerTask = std::function<void(const std::stop_token& stop)>;

// One job at a time. UI thread.
class Worker {
public:
    Worker() = default;
    ~Worker() { Cancel(); }
    Worker(Worker&&) noexcept = default;
    Worker& operator=(Worker&& other) noexcept;

    // Cancels the job under way and starts another one. False when the system has no thread left.
    bool Start(WorkerTask task);

    // Tells the job to stop and does not wait for it. Nothing that it posted runs from now on.
    void Cancel() { stop_.request_stop(); }

private:
    std::stop_source stop_{std::nostopstate};
};

// The same for a job that nobody cancels before the program ends. Any thread.
bool StartWorker(std::function<void()> work);

// For the end of the program: tells every worker to stop, waits for them, together no longer than `longestWait`, and
// drops what was posted. One that hangs in the system stays behind; nothing that it posts is run. UI thread.
void EndWorkers(std::chrono::milliseconds longestWait = std::chrono::seconds(1));

// For tests: from now on Worker::Start runs the job itself before it returns. Jobs of StartWorker keep their threads.
void RunWorkersInline(bool isInline);

}  // namespace hullrider
