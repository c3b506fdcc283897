#include "platform/windows/ComThread.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <objbase.h>
#include <thread>

namespace zv {

struct ComThread::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> tasks;
    bool entered = false;
    bool ends = false;

    /// Whether there was one; false once the thread is to end and nothing is left.
    bool doNext()
    {
        std::function<void()> task;
        {
            std::unique_lock lock(mutex);
            changed.wait(lock, [this] { return ends || !tasks.empty(); });
            if (tasks.empty())
                return false;
            task = std::move(tasks.front());
            tasks.pop_front();
        }
        // What a task comes to is its own affair; the thread goes on to the next.
        try {
            task();
        } catch (...) {
            static_cast<void>(0);
        }
        return true;
    }
};

ComThread::ComThread() : m_state(std::make_shared<State>())
{
    std::thread([state = m_state] {
        const HRESULT entered = ::CoInitializeEx(nullptr, COINIT_MULTITHREADED | COINIT_DISABLE_OLE1DDE);
        {
            const std::lock_guard lock(state->mutex);
            state->entered = true;
        }
        state->changed.notify_all();
        while (state->doNext()) {
        }
        if (SUCCEEDED(entered))
            ::CoUninitialize();
    }).detach();
    std::unique_lock lock(m_state->mutex);
    m_state->changed.wait(lock, [this] { return m_state->entered; });
}

ComThread::~ComThread()
{
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->ends = true;
    }
    m_state->changed.notify_all();
}

void ComThread::post(std::function<void()> task)
{
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->tasks.push_back(std::move(task));
    }
    m_state->changed.notify_all();
}

} // namespace zv
