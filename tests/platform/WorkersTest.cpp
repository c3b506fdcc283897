#include "platform/Workers.h"

#include "platform/WithinMemory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <list>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace zv {
namespace {

/// Where threads wait for one another. The library's own latch can miss the last arrival where the system has
/// no wait for a number in memory, as with MinGW.
class Meeting {
public:
    explicit Meeting(unsigned awaited) : m_awaited(awaited) {}
    void arrive()
    {
        const std::lock_guard lock(m_mutex);
        --m_awaited;
        m_changed.notify_all();
    }
    void wait()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_awaited == 0; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    unsigned m_awaited;
};

class WorkersTest : public testing::Test {
protected:
    ~WorkersTest() override { EXPECT_TRUE(waitForWorkers(std::chrono::seconds(5))) << "no thread is left"; }
};

TEST_F(WorkersTest, GiveWhatTheirWorkComesTo)
{
    Workers workers;
    auto two = workers.start([] { return 2; });
    auto three = workers.start([] { return 3; });
    EXPECT_EQ(two.get(), 2);
    EXPECT_EQ(three.get(), 3);
}

TEST_F(WorkersTest, WorkSideBySide)
{
    Workers workers(3);
    Meeting together(3);
    std::vector<std::future<bool>> met;
    for (int i = 0; i < 3; ++i)
        met.push_back(workers.start([&together] {
            together.arrive();
            together.wait();
            return true;
        }));
    for (auto& one : met)
        EXPECT_TRUE(one.get());
}

TEST_F(WorkersTest, AreNeverMoreThanAllowed)
{
    Workers workers(2);
    std::atomic<int> now = 0, most = 0;
    std::vector<std::future<int>> done;
    for (int i = 0; i < 50; ++i)
        done.push_back(workers.start([&now, &most] {
            const int here = ++now;
            for (int seen = most; here > seen && !most.compare_exchange_weak(seen, here);)
                continue;
            return now--;
        }));
    for (auto& one : done)
        one.wait();
    EXPECT_LE(most, 2);
}

TEST_F(WorkersTest, DropWhatWaitsAndDoNotWaitForWhatHangs)
{
    std::promise<void> release;
    const std::shared_future<void> released = release.get_future().share();
    std::atomic<bool> second = false;
    std::future<int> hanging;
    {
        Workers workers(1);
        std::promise<void> begun;
        hanging = workers.start([released, &begun] {
            begun.set_value();
            released.wait();
            return 1;
        });
        begun.get_future().wait();
        static_cast<void>(workers.start([&second] { return second = true; }));
    }
    EXPECT_FALSE(waitForWorkers(std::chrono::milliseconds(1)));
    release.set_value();
    EXPECT_EQ(hanging.get(), 1);
    EXPECT_TRUE(waitForWorkers(std::chrono::seconds(5)));
    EXPECT_FALSE(second);
}

TEST_F(WorkersTest, ManyThatHangLeaveEachFurtherOneASingleThread)
{
    constexpr unsigned kHanging = 4 * kMostWorkers;
    std::promise<void> share;
    const std::shared_future<void> comesBack = share.get_future().share();
    Meeting begun(kHanging);
    const auto hang = [comesBack, &begun] {
        begun.arrive();
        comesBack.wait();
    };
    std::list<Workers> given(4);
    for (Workers& workers : given)
        for (unsigned i = 0; i < kMostWorkers; ++i)
            static_cast<void>(workers.start(hang));
    // A thread that has not begun ends with its Workers.
    begun.wait();
    EXPECT_EQ(livingWorkers(), kHanging);
    given.clear();
    Workers further;
    for (int i = 0; i < 3; ++i)
        static_cast<void>(further.start([comesBack] { comesBack.wait(); }));
    EXPECT_EQ(livingWorkers(), kHanging + 1);
    share.set_value();
}

/// More than any machine has, and not known to the compiler.
std::string allTheMemoryThereIs()
{
    const volatile std::size_t size = std::size_t{1} << (8 * sizeof(std::size_t) - 2);
    return std::string(size, 'x');
}

TEST_F(WorkersTest, MemoryThatIsNotThereIsAnErrorAndTheThreadGoesOn)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer ends the process";
#endif
    Workers workers(1);
    auto failing = workers.start([] { return allTheMemoryThereIs().size(); });
    auto guarded = workers.start(
        [] { return withinMemory([]() -> Result<std::size_t> { return allTheMemoryThereIs().size(); }); });
    auto next = workers.start([] { return 2; });
    EXPECT_THROW(failing.get(), std::bad_alloc);
    EXPECT_EQ(guarded.get().error().code, ErrorCode::TooLarge);
    EXPECT_EQ(next.get(), 2);
}

TEST_F(WorkersTest, AFailureOfTheLanguageComesOutOfTheFuture)
{
    Workers workers;
    auto failing = workers.start([]() -> int { throw std::runtime_error("no memory"); });
    EXPECT_THROW(failing.get(), std::runtime_error);
}

} // namespace
} // namespace zv
