#pragma once

#include <functional>
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

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace zv
