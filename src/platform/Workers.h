#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <utility>

namespace zv {

/// How many reads go on at once: enough to keep a slow share busy, few enough not to drown it.
inline constexpr unsigned kMostWorkers = 32;

/// Threads beside the program's own one, for reads that may take long. They are started as they are needed
/// and end by themselves when nothing has been left to do for a while.
class Workers {
public:
    explicit Workers(unsigned most = kMostWorkers);
    /// What still waits is dropped, and its future never gets a value. What is under way ends by itself and
    /// is not waited for, so it must hold everything that it needs.
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    /// Lets a worker do it, in the order of asking. A failure of the language comes out of the future.
    template <class Work> auto start(Work work) -> std::future<decltype(work())>
    {
        auto task = std::make_shared<std::packaged_task<decltype(work())()>>(std::move(work));
        auto result = task->get_future();
        run([task] { (*task)(); });
        return result;
    }

private:
    struct Shared;
    void run(std::function<void()> job);

    std::shared_ptr<Shared> m_shared;
};

/// How many threads of any Workers there are at present.
unsigned livingWorkers();
/// Waits until none is left. False when one still hangs in a read after that time.
bool waitForWorkers(std::chrono::milliseconds atMost);

} // namespace zv
