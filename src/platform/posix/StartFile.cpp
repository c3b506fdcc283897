#include "platform/posix/StartFile.h"

#include "platform/Files.h"
#include "platform/LocalHosts.h"
#include "platform/System.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace zv {

namespace {

constexpr std::uint64_t kMostStartBytes = 0x10000; ///< A start file is one line.

std::string environmentValue(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// Where start files are looked for, in order.
std::vector<std::string> startFolders()
{
    std::string data = environmentValue("XDG_DATA_HOME");
    if (data.empty())
        data = environmentValue("HOME") + "/.local/share";
    return {data + "/zelvora/hosts", installationFolder() + "/hosts"};
}

/// A program that nobody waits for stays behind when it has ended, as long as this one lives.
StartedProcess waitFor(pid_t process)
{
    auto ended = std::make_shared<std::atomic<bool>>(false);
    std::thread([process, ended] {
        while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
        }
        *ended = true;
    }).detach();
    return StartedProcess(std::move(ended));
}

/// Starts a program in a session of its own, so that it outlives this one, with no signal blocked or ignored
/// and no file open but its input and outputs.
Result<StartedProcess> spawn(const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& word : command)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);

    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    // Not every library marks what it opens as this program's own.
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);

    pid_t process = -1;
    const int failure =
        ::posix_spawn(&process, command[0].c_str(), &actions, &attributes, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    if (failure != 0)
        return Error{ErrorCode::Failed, command[0] + ": " + std::strerror(failure)};
    return waitFor(process);
}

} // namespace

std::vector<std::string> startCommand(std::string_view firstLine, const std::string& folder)
{
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    bool inQuotes = false;
    for (const char c : firstLine) {
        const bool isBlank = c == ' ' || c == '\t' || c == '\r';
        if (c == '"') {
            inQuotes = !inQuotes;
            inWord = true;
        } else if (isBlank && !inQuotes) {
            if (inWord)
                words.push_back(std::move(word));
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord)
        words.push_back(std::move(word));
    if (words.empty() || words[0].empty())
        return {};
    if (words[0].front() != '/')
        words[0] = folder + "/" + words[0];
    return words;
}

Result<StartedProcess> runStartFile(const std::string& progId)
{
    for (const std::string& folder : startFolders()) {
        const Result<std::string> text = readFile(joinPath(folder, progId + ".start"), kMostStartBytes);
        if (!text)
            continue;
        const std::vector<std::string> command =
            startCommand(std::string_view(*text).substr(0, text->find('\n')), folder);
        if (command.empty())
            return Error{ErrorCode::Failed, progId + ".start names no program"};
        return spawn(command);
    }
    return Error{ErrorCode::NotFound, progId + " is not installed"};
}

} // namespace zv
