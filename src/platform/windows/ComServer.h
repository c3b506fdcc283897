#pragma once

#include "platform/Result.h"
#include "platform/Wire.h"

#include <functional>
#include <memory>
#include <string>

namespace zv {

/// This program as others drive it over COM: its application object, under names such as
/// "AutoCAD.Application". Other programs' calls come in on the thread that made it, which must be in an
/// apartment of its own and turn its messages.
class ComServer {
public:
    using Respond = std::function<void(const wire::Answer& answer)>;
    /// Answers a request, now or, when the user has to be asked, later.
    using Ask = std::function<void(const wire::Request& request, const Respond& respond)>;
    /// Turns the program's events until `isDone` says so; false when the program is to end first.
    using Wait = std::function<bool(const std::function<bool()>& isDone)>;

    ComServer(Ask ask, Wait wait);
    /// Takes the names off again; what others still hold answers that the program has ended.
    ~ComServer();
    ComServer(const ComServer&) = delete;
    ComServer& operator=(const ComServer&) = delete;

    /// Makes this program the one of that name for this user, also for who starts it by its name, unless
    /// another program is installed under it. Errors: Denied, another program is; Busy, one of this program's
    /// class runs already; Failed.
    Result<void> open(const std::string& progId);

    struct State;

private:
    std::shared_ptr<State> m_state;
};

} // namespace zv
