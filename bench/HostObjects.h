#pragma once

#include "CommandLine.h"
#include "Commands.h"
#include "Workshop.h"

#include "platform/Wire.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <variant>

namespace zv::bench {

/// The program's own window as other programs see it.
class HostFrame {
public:
    virtual ~HostFrame() = default;
    virtual std::string caption() const = 0;
    virtual bool isShown() const = 0;
    virtual void setShown(bool shown) = 0;
    virtual std::int64_t windowHandle() const = 0;
    virtual int windowState() const = 0; ///< 1 normal, 2 minimised, 3 maximised.
    virtual void setWindowState(int state) = 0;
    virtual std::string programPath() const = 0;
    /// A dialog stands open, so that nothing else can be done.
    virtual bool isInDialog() const = 0;
};

/// What the connections share.
struct HostProgram {
    Workshop& workshop;
    CommandLine& commandLine;
    HostFrame& frame;
    /// A call waits for the user's answer, and others are refused.
    bool inCall = false;
};

/// The objects that one connection has been given, and the answers to its requests.
class HostObjects {
public:
    /// Is called with the answer of a request, now or when the user has answered.
    using Respond = std::function<void(const wire::Answer& answer)>;

    explicit HostObjects(HostProgram& program) : m_program(program) {}
    ~HostObjects();
    HostObjects(const HostObjects&) = delete;
    HostObjects& operator=(const HostObjects&) = delete;

    void handle(const wire::Request& request, const Respond& respond);

private:
    struct Later {}; ///< The answer comes when the user has given his.
    using Reply = std::variant<wire::Value, wire::Values, wire::Failure, Later>;
    using Finish = std::function<void(wire::Content content)>;
    enum class Kind { Application, Document, Documents, Blocks, Block, Utility };
    struct Object {
        Kind kind = Kind::Application;
        std::shared_ptr<BenchDrawing> drawing;
        dwg::Handle block = 0;
    };
    using Arguments = wire::Values;

    Reply answer(const wire::Request& request, const Finish& finish);
    Reply get(const Object& object, const std::string& name);
    Reply getApplication(const std::string& name);
    Reply getDocument(const Object& object, const std::string& name);
    Reply getBlock(const Object& object, const std::string& name);
    Reply set(const Object& object, const std::string& name, const wire::Value& value);
    Reply call(const Object& object, const std::string& name, const Arguments& arguments,
               const Finish& finish);
    Reply callDocuments(const std::string& name, const Arguments& arguments);
    Reply callDocument(const Object& object, const std::string& name, const Arguments& arguments);
    Reply callBlocks(const Object& object, const std::string& name, const Arguments& arguments);
    Reply callUtility(const Object& object, const std::string& name, const Arguments& arguments,
                      const Finish& finish);
    Reply variable(const Object& object, const std::string& name, const Arguments& arguments);
    Reply save(const Object& object, const std::string& path);
    Reply closeDocument(const Object& object, const Arguments& arguments);
    Reply askPoint(const Object& object, const Arguments& arguments, const Finish& finish);
    Reply askText(const Object& object, const Arguments& arguments, const Finish& finish);
    void ask(Prompt prompt, std::function<Step(const Answer&)> take, const Finish& finish);
    void leave(const std::shared_ptr<BenchDrawing>& next);
    void show(const Object& object);
    Reply items(const Object& object);
    wire::Value give(Object object);
    bool isOpen(const Object& object) const;

    HostProgram& m_program;
    std::map<std::int64_t, Object> m_objects;
    std::int64_t m_lastNumber = 0;
    std::shared_ptr<bool> m_asking = std::make_shared<bool>(false); ///< This connection's call waits.
};

} // namespace zv::bench
