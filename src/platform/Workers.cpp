#include "platform/Workers.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>

namespace zv {

namespace {

constexpr std::chrono::milliseconds kIdle(300); ///< How long a thread stays without work.
/// Of all Workers together, when so many threads hang in reads that nobody waits for any more. Beyond that
/// each makes do with one.
constexpr unsigned kMostThreads = 4 * kMostWorkers;

/// Counts the threads of the process. It is never destroyed, since a thread that hangs may outlast all else.
struct Living {
    std::mutex mutex;
    std::condition_variable changed;
    unsigned count = 0;
};

Living& living()
{
    static auto* const shared = new Living;
    return *shared;
}

void countThread(int by)
{
    const std::lock_guard lock(living().mutex);
    living().count += static_cast<unsigned>(by);
    living().changed.notify_all();
}

} // namespace

/// What the threads share among them and with their owner, whichever of them is there last.
struct Workers::Shared {
    explicit Shared(unsigned most) : mostThreads(most) {}

    const unsigned mostThreads;
    std::mutex mutex;
    std::condition_variable wakened;
    std::deque<std::function<void()>> jobs;
    unsigned threads = 0, idle = 0;
    bool ended = false;

    /// The next job, or none when the thread has nothing left to stay for.
    std::function<void()> next()
    {
        std::unique_lock lock(mutex);
        ++idle;
        wakened.wait_for(lock, kIdle, [this] { return ended || !jobs.empty(); });
        --idle;
        if (ended || jobs.empty()) {
            --threads;
            return {};
        }
        std::function<void()> job = std::move(jobs.front());
        jobs.pop_front();
        return job;
    }
};

Workers::Workers(unsigned most) : m_shared(std::make_shared<Shared>(std::max(most, 1U))) {}

Workers::~Workers()
{
    std::deque<std::function<void()>> dropped;
    {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->ended = true;
        dropped.swap(m_shared->jobs);
    }
    m_shared->wakened.notify_all();
}

void Workers::run(std::function<void()> job)
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->jobs.push_back(std::move(job));
    const bool mayGrow = m_shared->threads == 0 ||
                         (m_shared->threads < m_shared->mostThreads && livingWorkers() < kMostThreads);
    if (m_shared->jobs.size() <= m_shared->idle || !mayGrow) {
        m_shared->wakened.notify_one();
        return;
    }
    countThread(1);
    try {
        std::thread([shared = m_shared] {
            while (const auto next = shared->next())
                next();
            countThread(-1);
        }).detach();
        ++m_shared->threads;
    } catch (const std::system_error&) {
        countThread(-1);
        // The threads that there are do it in their time; without any there is no way on.
        if (m_shared->threads == 0) {
            m_shared->jobs.pop_back();
            throw;
        }
    }
}

unsigned livingWorkers()
{
    const std::lock_guard lock(living().mutex);
    return living().count;
}

bool waitForWorkers(std::chrono::milliseconds atMost)
{
    std::unique_lock lock(living().mutex);
    return living().changed.wait_for(lock, atMost, [] { return living().count == 0; });
}

} // namespace zv
