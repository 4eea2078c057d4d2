#include "platform/worker.h"

#include <atomic>
#include <condition_variable>
#include <deque>
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
#include "platform/thread_priority.h"

namespace hullrider {

namespace {

// Counts a job from its order to its end.
class Running {
public:
    explicit Running(const std::stop_source& stop);
    ~Running();
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    PlayClock* const clock_;
    std::list<std::stop_source>::iterator place_;
};

struct Job {
    std::unique_ptr<Running> running;
    WorkerTask task;
    std::stop_source stop{std::nostopstate};
};

struct Workers {
    std::mutex mutex;
    std::condition_variable oneEnded, jobCame;
    std::list<std::stop_source> running;  // one for each job that has not ended
    std::deque<Job> jobs;                 // that no thread has taken yet
    size_t idle = 0;                      // threads that wait for a job
};

Workers& TheWorkers() {
    static Workers& workers = *new Workers;  // never destroyed: workers may outlive main
    return workers;
}

Running::Running(const std::stop_source& stop) : clock_(ClockOfTest()) {
    if (clock_ != nullptr) clock_->OnWorkerStart();
    Workers& workers = TheWorkers();
    const std::lock_guard lock(workers.mutex);
    place_ = workers.running.insert(workers.running.end(), stop);
}

Running::~Running() {
    {
        Workers& workers = TheWorkers();
        const std::lock_guard lock(workers.mutex);
        workers.running.erase(place_);
        workers.oneEnded.notify_all();
    }
    if (clock_ != nullptr) clock_->OnWorkerEnd();
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

// Runs jobs, one after the other. A thread is kept when its job is over: starting one costs more than most jobs do, and
// mingw-w64's thread library now and then loses a thread that starts while a detached one ends.
void TakeJobs() {
    Workers& workers = TheWorkers();
    do {
        Job job;
        {
            std::unique_lock lock(workers.mutex);
            ++workers.idle;
            workers.jobCame.wait(lock, [&] { return !workers.jobs.empty(); });
            --workers.idle;
            job = std::move(workers.jobs.front());
            workers.jobs.pop_front();
        }
        RunTask(job.task, job.stop.get_token());
        job.task = nullptr;  // what it owns must be gone when the worker counts as ended
    } while (RestoreThreadPriority());
}

bool StartJob(WorkerTask task, const std::stop_source& stop) {
    Workers& workers = TheWorkers();
    Job job{std::make_unique<Running>(stop), std::move(task), stop};
    std::unique_lock lock(workers.mutex);
    workers.jobs.push_back(std::move(job));
    workers.jobCame.notify_one();
    if (workers.jobs.size() <= workers.idle) return true;
    try {
        std::thread(TakeJobs).detach();
        return true;
    } catch (const std::system_error&) {
        job = std::move(workers.jobs.back());  // it ends without having run, when nothing is locked any more
        workers.jobs.pop_back();
        lock.unlock();
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
    if (!runsInline) return StartJob(std::move(task), stop_);
    RunTask(task, stop_.get_token());
    return true;
}

bool StartWorker(std::function<void()> work) {
    return StartJob([work = std::move(work)](const std::stop_token&) { work(); }, std::stop_source());
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
