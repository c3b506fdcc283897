#pragma once

#include <functional>
#include <future>
#include <memory>

namespace zv {

/// A thread inside COM's multi-threaded apartment, which does what it is given one after the other.
/// Interfaces that one such thread has are good on every other.
class ComThread {
public:
    /// Returns once the thread is inside the apartment.
    ComThread();
    /// What was posted is still done; nobody waits for it.
    ~ComThread();
    ComThread(const ComThread&) = delete;
    ComThread& operator=(const ComThread&) = delete;

    void post(std::function<void()> task);
    /// The same for a task that somebody waits for. A failure of the language comes out of the future, for
    /// the caller has a guard for it.
    template <class Task> auto start(Task task) -> std::future<decltype(task())>
    {
        auto started = std::make_shared<std::packaged_task<decltype(task())()>>(std::move(task));
        post([started] { (*started)(); });
        return started->get_future();
    }

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace zv
