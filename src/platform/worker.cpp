#include "platform/worker.h"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/console.h"
#include "platform/play_clock.h"
#include "platform/post.h"
#include "platform/stop_scope.h"

namespace hullrider {

namespace {

// All running workers.
struct Workers {
    std::mutex mutex;
    std::condition_variable oneEnded;
    std::list<std::stop_source> running;
};

Workers& TheWorkers() {
    static Workers& workers = *new Workers;  // never destroyed: workers may outlive main
    return workers;
}

std::atomic<bool> runsInline{false};

void RunTask(const WorkerTask& task, const std::stop_token& stop) {
    const StopScope scope(&stop);
    try {
        task(stop);
    } catch (const std::exception& failure) {
        PrintErrorLine(std::string("Background work failed: ") + failure.what());
    }
}

// Counts a worker from before its thread starts until it ends.
class Running {
public:
    explicit Running(const std::stop_source& stop) : clock_(ClockOfTest()) {
        if (clock_ != nullptr) clock_->OnWorkerStart();
        Workers& workers = TheWorkers();
        const std::lock_guard lock(workers.mutex);
        place_ = workers.running.insert(workers.running.end(), stop);
    }
    ~Running() {
        {
            Workers& workers = TheWorkers();
            const std::lock_guard lock(workers.mutex);
            workers.running.erase(place_);
            workers.oneEnded.notify_all();
        }
        if (clock_ != nullptr) clock_->OnWorkerEnd();
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    PlayClock* const clock_;
    std::list<std::stop_source>::iterator place_;
};

bool StartThread(WorkerTask task, const std::stop_source& stop) {
    try {
        std::thread([running = std::make_unique<Running>(stop), task = std::move(task), stop]() mutable {
            RunTask(task, stop.get_token());
            task = nullptr;  // destroy what it owns before the worker counts as ended
            running.reset();
        }).detach();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

}  // namespace

Worker& Worker::operator=(Worker&& other) noexcept {
    if (this == &other) return *this;
    Cancel();
    stop_ = std::move(other.stop_);
    return *this;
}

bool Worker::Start(WorkerTask task) {
    Cancel();
    stop_ = std::stop_source();
    if (!runsInline) return StartThread(std::move(task), stop_);
    RunTask(task, stop_.get_token());
    return true;
}

bool StartWorker(std::function<void()> work) {
    return StartThread([work = std::move(work)](const std::stop_token&) { work(); }, std::stop_source());
}

void EndWorkers(std::chrono::milliseconds longestWait) {
    Workers& workers = TheWorkers();
    std::unique_lock lock(workers.mutex);
    const std::list<std::stop_source> told = workers.running;
    lock.unlock();
    // Unlocked, because stop callbacks may do anything.
    for (std::stop_source stop : told) stop.request_stop();
    lock.lock();
    workers.oneEnded.wait_for(lock, longestWait, [&] { return workers.running.empty(); });
    lock.unlock();
    DropPosted();
}

void RunWorkersInline(bool isInline) {
    runsInline = isInline;
}

}  // namespace hullrider
