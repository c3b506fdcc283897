#pragma once

#include "HostObjects.h"

#include "platform/Result.h"

#include <memory>
#include <string>
#include <vector>

namespace zv::bench {

/// Lets other programs find this one by the names that it answers to, and serves all of them: over local
/// sockets, on Windows over COM.
class HostServer {
public:
    explicit HostServer(HostProgram program);
    ~HostServer();
    HostServer(const HostServer&) = delete;
    HostServer& operator=(const HostServer&) = delete;

    /// Errors: Busy, another running bench has the name; Denied, another program is installed under it; as
    /// the system's way to find programs.
    Result<void> listen(const std::string& progId);

    /// The names that a bench answers to. The first is its own, under which another bench that starts looks
    /// for it; the others may be another program's where a real AutoCAD can be installed.
    static std::vector<std::string> names();

private:
    class Doors;
    std::unique_ptr<Doors> m_doors;
};

} // namespace zv::bench
