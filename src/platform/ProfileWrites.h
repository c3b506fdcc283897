#pragma once

#include "platform/ProfileFile.h"

#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <string>

namespace zv {

/// How long a change waits for a profile that another program holds, before it is given up.
inline constexpr std::chrono::seconds kProfilePatience{10};

/// The changes of profile files on their way to the disk. One is carried out at once where nobody else holds
/// the file. Otherwise it waits here with all later ones of that file, and is tried again whenever the caller
/// has the time, in order, until its patience is at its end. The program reads what waits as if it were
/// written.
class ProfileWrites {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit ProfileWrites(std::function<Time()> now = std::chrono::steady_clock::now) : m_now(std::move(now))
    {
    }

    /// Called when a first change begins to wait, so that somebody calls retry() from then on.
    void whenWaiting(std::function<void()> listener) { m_listener = std::move(listener); }

    /// False when the change has failed; one that waits has not.
    bool write(ProfileChange change);
    /// Tries all that waits once more. True while something waits still.
    bool retry();
    /// Tries for `patience` at most, and then gives up what cannot be written: the program ends.
    void end(std::chrono::milliseconds patience);

    /// What the waiting changes make of a key: nothing, when none concerns it; else its value or its absence.
    std::optional<std::optional<std::string>>
    waitingValue(const std::string& file, const std::string& section, const std::string& key) const;

private:
    struct Waiting {
        ProfileChange change;
        Time until;
    };

    bool waitsFor(const std::string& file) const;

    std::function<Time()> m_now;
    std::function<void()> m_listener;
    std::deque<Waiting> m_waiting;
};

/// Those of this program.
ProfileWrites& profileWrites();

} // namespace zv
