#pragma once

#include <memory>
#include <string>

namespace zv::test {

/// A place of its own for hosts: none runs in it and none is installed until a test says so.
class HostPlace {
public:
    HostPlace();
    ~HostPlace();
    HostPlace(const HostPlace&) = delete;
    HostPlace& operator=(const HostPlace&) = delete;

    /// Runs a scripted host and returns once it answers as "AutoCAD.Application". Only one at a time.
    void run(const std::string& script);
    /// Ends the host that runs, and returns when it has gone.
    void end();
    /// Makes `progId` a name that can be created: the scripted host with this script.
    void install(const std::string& progId, const std::string& script);
    /// What the host wrote down, line by line.
    std::string transcript() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace zv::test
