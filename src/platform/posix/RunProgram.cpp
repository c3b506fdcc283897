#include "platform/RunProgram.h"

#include <cerrno>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zv {

Result<int> runProgram(const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& text : command)
        arguments.push_back(const_cast<char*>(text.c_str()));
    arguments.push_back(nullptr);
    pid_t child = 0;
    if (::posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0)
        return Error{ErrorCode::NotFound, "the program cannot be started"};
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return Error{ErrorCode::Failed, "the program's end cannot be told"};
    }
    if (!WIFEXITED(status))
        return Error{ErrorCode::Failed, "the program was ended by force"};
    return WEXITSTATUS(status);
}

} // namespace zv
