#include "platform/worker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

#include "platform/play_clock.h"
#include "platform/post.h"
#include "tests/console_capture.h"
#include "tests/eventually.h"

namespace hullrider {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class WorkerTest : public testing::Test {
protected:
    ~WorkerTest() override {
        EndWorkers();
        SetPostWaker({});
    }

    // Runs what is posted until the claim holds.
    static bool RunUntil(const auto& claim) {
        return Eventually([&] {
            RunPosted();
            return claim();
        });
    }
};

// A thread library may lose a thread that starts while another one ends.
TEST_F(WorkerTest, NoneOfManyShortJobsIsLost) {
    std::atomic<int> done{0};
    for (int i = 1; i <= 20'000; ++i) {
        ASSERT_TRUE(StartWorker([&] { ++done; }));
        const auto isDone = [&] { return done == i; };
        for (int spins = 0; spins < 1000 && !isDone(); ++spins) std::this_thread::yield();
        ASSERT_TRUE(isDone() || Eventually(isDone)) << i;
    }
}

TEST_F(WorkerTest, WhatManyThreadsPostRunsOnceEachInTheirOrderOnTheUiThread) {
    constexpr int kThreads = 4, kEach = 500;
    const std::thread::id uiThread = std::this_thread::get_id();
    std::vector<std::vector<int>> seen(kThreads);
    std::atomic<int> total{0};
    std::vector<Worker> workers(kThreads);
    for (int thread = 0; thread < kThreads; ++thread) {
        ASSERT_TRUE(workers[thread].Start([&, thread](const std::stop_token&) {
            for (int i = 0; i < kEach; ++i) {
                Post([&, thread, i] {
                    EXPECT_EQ(std::this_thread::get_id(), uiThread);
                    seen[thread].push_back(i);
                    ++total;
                });
            }
        }));
    }
    EXPECT_TRUE(RunUntil([&] { return total == kThreads * kEach; }));
    for (const std::vector<int>& numbers : seen) {
        for (int i = 0; i < kEach; ++i) ASSERT_EQ(numbers.at(i), i);
    }
}

TEST_F(WorkerTest, NothingThatACanceledWorkerPostedRuns) {
    const char* const ways[] = {"Cancel", "another Start", "its end", "EndWorkers", "a move onto it"};
    for (int way = 0; way < 5; ++way) {
        SCOPED_TRACE(ways[way]);
        std::promise<void> posted;
        bool hasRun = false, otherRan = false;
        auto worker = std::make_unique<Worker>();
        ASSERT_TRUE(worker->Start([&](const std::stop_token&) {
            Post([&] { hasRun = true; });
            posted.set_value();
        }));
        posted.get_future().wait();
        if (way != 3) Post([&] { otherRan = true; });
        if (way == 0) worker->Cancel();
        if (way == 1) worker->Start([](const std::stop_token&) {});
        if (way == 2) worker.reset();
        if (way == 3) EndWorkers();
        if (way == 4) *worker = Worker();
        RunPosted();
        EXPECT_FALSE(hasRun);
        EXPECT_EQ(otherRan, way != 3);
    }
}

TEST_F(WorkerTest, ACanceledWorkerSleepsNoLonger) {
    std::promise<bool> slept;
    std::promise<void> started;
    Worker worker;
    worker.Start([&](const std::stop_token&) {
        started.set_value();
        slept.set_value(SleepFor(1h));
    });
    started.get_future().wait();
    worker.Cancel();
    EXPECT_FALSE(slept.get_future().get());
    EXPECT_TRUE(SleepFor(1ms));
}

TEST_F(WorkerTest, TheEndStopsAllAndWaitsForNobodyThatHangs) {
    std::atomic<int> stopped{0};
    auto hangs = std::make_shared<std::promise<void>>();
    std::vector<Worker> workers(3);
    for (Worker& worker : workers) {
        worker.Start([&](const std::stop_token& stop) {
            while (!stop.stop_requested()) SleepFor(1h);
            ++stopped;
        });
    }
    StartWorker([&stopped] {
        if (!SleepFor(1h)) ++stopped;
    });
    EndWorkers();
    EXPECT_EQ(stopped, 4);

    std::promise<void> ended;
    StartWorker([hangs, &ended] {
        hangs->get_future().wait();
        Post([] { ADD_FAILURE() << "posted after the end"; });
        ended.set_value();
    });
    const auto before = Clock::now();
    EndWorkers(50ms);
    EXPECT_GE(Clock::now() - before, 50ms);
    EXPECT_LT(Clock::now() - before, 900ms);
    hangs->set_value();
    ended.get_future().wait();
    RunPosted();
}

TEST_F(WorkerTest, TheWakerIsCalledOnceUntilWhatWasPostedIsTaken) {
    int woken = 0, ran = 0;
    SetPostWaker([&] { ++woken; });
    for (int round = 1; round <= 3; ++round) {
        for (int i = 0; i < 5; ++i) Post([&] { ++ran; });
        EXPECT_EQ(woken, round);
        RunPosted();
        EXPECT_EQ(ran, round * 5);
    }
    Post([&] { Post([&] { ++ran; }); });
    RunPosted();
    EXPECT_EQ(ran, 15) << "what is posted meanwhile waits, so that posting cannot hold the UI thread";
    EXPECT_EQ(woken, 5);
    RunPosted();
    EXPECT_EQ(ran, 16);
}

TEST_F(WorkerTest, AnExceptionEndsOnlyWhatItWasThrownBy) {
    ConsoleCapture console;
    bool ran = false;
    Post([] { throw std::runtime_error("no such list"); });
    Post([&] { ran = true; });
    RunPosted();
    EXPECT_TRUE(ran);
    Worker worker;
    worker.Start([](const std::stop_token&) { throw std::runtime_error("no such page"); });
    EndWorkers();
    EXPECT_EQ(console.Errors(), "no such list\nBackground work failed: no such page\n");
}

}  // namespace
}  // namespace hullrider
