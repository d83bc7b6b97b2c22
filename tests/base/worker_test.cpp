#include "base/offload.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace bridge {
namespace {

Task<std::string> onWorker(EventLoop& loop, Worker& worker, std::function<std::string()> job) {
    auto call = offload(loop, worker, job);
    const auto answer = co_await call;
    co_return answer;
}

// What runs after everything that was posted before.
void runPosted(EventLoop& loop) {
    loop.post([&loop] { loop.stop(); });
    loop.run();
}

// Returns once all jobs given before have been run.
void waitForJobs(Worker& worker) {
    std::binary_semaphore reached{0};
    worker.run([&reached] { reached.release(); });
    reached.acquire();
}

TEST(Worker, RunsJobsOneAtATimeInOrder) {
    std::vector<int> order;
    {
        Worker worker;
        for (int index = 0; index < 1000; ++index)
            worker.run([&order, index] { order.push_back(index); });
        waitForJobs(worker);
    }
    ASSERT_EQ(order.size(), 1000u);
    for (int index = 0; index < 1000; ++index)
        ASSERT_EQ(order[static_cast<size_t>(index)], index);
}

TEST(Worker, TakesJobsFromAnyThread) {
    int count = 0;
    Worker worker;
    {
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([&] {
                for (int index = 0; index < 100; ++index)
                    worker.run([&count] { ++count; });
            });
        for (auto& thread : threads)
            thread.join();
    }
    waitForJobs(worker);
    EXPECT_EQ(count, 400);
}

TEST(Worker, EndsAfterTheRunningJobAndKeepsNothingOfTheQueue) {
    const auto held = std::make_shared<int>(0);
    std::binary_semaphore started{0};
    std::binary_semaphore proceed{0};
    bool finished = false;
    auto worker = std::make_unique<Worker>();
    worker->run([&] {
        started.release();
        proceed.acquire();
        finished = true;
    });
    started.acquire();
    for (int index = 0; index < 10; ++index)
        worker->run([held] {});
    EXPECT_EQ(held.use_count(), 11);
    // Ending is under way while the job still runs, or begins right after it: the queue may only run in the second
    // case.
    std::thread ending([&worker] { worker.reset(); });
    proceed.release();
    ending.join();
    EXPECT_TRUE(finished);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(Offload, BringsTheResultHome) {
    EventLoop loop;
    Worker worker;
    const auto home = std::this_thread::get_id();
    std::thread::id ranOn;
    const auto answer = loop.runUntilDone(onWorker(loop, worker, [&ranOn] {
        ranOn = std::this_thread::get_id();
        return std::string(10'000, 'x');
    }));
    EXPECT_EQ(answer, std::string(10'000, 'x'));
    EXPECT_NE(ranOn, home);
}

TEST(Offload, BringsTheExceptionHome) {
    EventLoop loop;
    Worker worker;
    try {
        loop.runUntilDone(onWorker(loop, worker, []() -> std::string { throw std::runtime_error("no such file"); }));
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "no such file");
    }
}

Task<int> manyJobs(EventLoop& loop, Worker& worker) {
    int sum = 0;
    for (int index = 0; index < 1000; ++index) {
        auto call = offload(loop, worker, [] { return 1; });
        const int one = co_await call;
        sum += one;
    }
    co_return sum;
}

TEST(Offload, MayBeAwaitedOverAndOver) {
    EventLoop loop;
    Worker worker;
    EXPECT_EQ(loop.runUntilDone(manyJobs(loop, worker)), 1000);
}

struct DroppedOffload : testing::Test {
    EventLoop loop;
    Worker worker;
    std::binary_semaphore started{0};
    std::binary_semaphore proceed{0};
    bool resumed = false;

    static Task<> waitFor(DroppedOffload& test, std::shared_ptr<int> held) {
        auto call = offload(test.loop, test.worker, [&test, held] {
            test.started.release();
            test.proceed.acquire();
            return *held;
        });
        co_await call;
        test.resumed = true;
    }
};

TEST_F(DroppedOffload, BeforeTheAnswerItGoesNowhere) {
    const auto held = std::make_shared<int>(7);
    {
        auto task = waitFor(*this, held);
        task.start();
        started.acquire();
    }
    proceed.release();
    waitForJobs(worker);
    runPosted(loop);
    EXPECT_FALSE(resumed);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(DroppedOffload, WithTheAnswerOnItsWayItGoesNowhereEither) {
    {
        auto task = waitFor(*this, std::make_shared<int>(7));
        task.start();
        proceed.release();
        waitForJobs(worker); // the answer has been posted, but the loop has not turned
        EXPECT_FALSE(task.done());
    }
    runPosted(loop);
    EXPECT_FALSE(resumed);
}

TEST_F(DroppedOffload, AfterTheAnswerNothingIsLeft) {
    {
        auto task = waitFor(*this, std::make_shared<int>(7));
        task.start();
        proceed.release();
        while (!task.done())
            loop.waitOnce();
    }
    EXPECT_TRUE(resumed);
    runPosted(loop);
}

TEST(Offload, JobsStillQueuedAtTheEndAreDropped) {
    EventLoop loop;
    const auto held = std::make_shared<int>(1);
    std::vector<Task<std::string>> waiting;
    {
        std::binary_semaphore started{0};
        std::binary_semaphore proceed{0};
        Worker worker;
        worker.run([&] {
            started.release();
            proceed.acquire();
        });
        started.acquire();
        for (int index = 0; index < 20; ++index) {
            waiting.push_back(onWorker(loop, worker, [held] { return std::to_string(*held); }));
            waiting.back().start();
        }
        proceed.release();
    }
    waiting.clear();
    runPosted(loop);
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
} // namespace bridge
