#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zv {

class AutomationObject;

/// An argument that is left out, so that the program takes its own default.
struct MissingArgument {
    friend bool operator==(MissingArgument, MissingArgument) { return true; }
};

/// Three coordinates in drawing units.
struct AutomationPoint {
    double x = 0, y = 0, z = 0;
    friend bool operator==(const AutomationPoint&, const AutomationPoint&) = default;
};

/// What goes to and comes from another program: empty (std::monostate), left out, true/false, whole, double,
/// text of the program's own, point, or object.
using AutomationValue = std::variant<std::monostate, MissingArgument, bool, std::int64_t, double, std::string,
                                     AutomationPoint, std::shared_ptr<AutomationObject>>;

/// An object inside a running CAD program. Members are looked up by name at each call, without regard to
/// case, so one build drives every release that still knows the name. Errors of every member: NotFound, the
/// program has no such name; Busy never comes back, for a busy program is asked again until it answers or has
/// been busy for a minute of the action; Cancelled, the user pressed Esc or gave the wait up; Lost, the
/// program has ended; Failed, anything else, in the program's own words.
class AutomationObject {
public:
    virtual ~AutomationObject() = default;
    virtual Result<AutomationValue> get(std::string_view name) = 0;
    virtual Result<void> set(std::string_view name, const AutomationValue& value) = 0;
    virtual Result<AutomationValue> call(std::string_view name,
                                         const std::vector<AutomationValue>& arguments) = 0;
    /// The members of a collection, in its own order.
    virtual Result<std::vector<AutomationValue>> items() = 0;
};

using AutomationObjectPtr = std::shared_ptr<AutomationObject>;

/// The way to other programs, which are known by names such as "AutoCAD.Application".
class Automation {
public:
    virtual ~Automation() = default;
    /// The running program's application object, at once. Errors: NotFound, none runs; Denied, the place
    /// where programs are found is not this user's own; Failed.
    virtual Result<AutomationObjectPtr> attach(const std::string& progId) = 0;
    /// Starts the program and waits, up to a minute, until it answers. Errors: NotFound, none of that name is
    /// installed; Lost, it ended before it answered; Failed.
    virtual Result<AutomationObjectPtr> create(const std::string& progId) = 0;

    /// Begins an action: a program may be busy for a minute in the whole of it, and what was given up before
    /// no longer counts. With a limit, in milliseconds, the action is given up when it has passed.
    virtual void beginAction(int /*limitMs*/ = -1) {}
    /// Whether the wait for the program was given up. Every call of the action then fails at once, Cancelled.
    virtual bool isGivenUp() const { return false; }
};

/// What the caller does while another program is waited for.
class EventPump {
public:
    virtual ~EventPump() = default;
    /// Returns when `descriptor` can be read (-1: there is none to watch), or after `timeoutMs` (-1: never).
    /// It may return earlier, and does at once when the wait is given up.
    virtual void wait(int descriptor, int timeoutMs) = 0;
    /// As Automation::beginAction().
    virtual void beginAction(int /*limitMs*/) {}
    /// Whether nobody wants to wait any longer, for the rest of the action.
    virtual bool isGivenUp() const { return false; }
    /// Told around waits that a user may notice; they may lie within one another.
    virtual void showWaiting(bool /*waiting*/) {}
};

/// The system's own carrier. `pump` must outlive it and every object that it gives out.
std::unique_ptr<Automation> systemAutomation(EventPump& pump);

// What a value must be to be used further. Errors: Failed, it is something else.
Result<AutomationObjectPtr> asObject(Result<AutomationValue> value);
Result<std::string> asText(Result<AutomationValue> value);
Result<double> asNumber(Result<AutomationValue> value);
Result<bool> asBool(Result<AutomationValue> value);
Result<AutomationPoint> asPoint(Result<AutomationValue> value);

} // namespace zv
