#include "platform/System.h"

#include "platform/Files.h"
#include "platform/Profile.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zv {

namespace {

/// The account that runs the program, asked for by `field`; empty when the system does not know it.
std::string accountField(char* passwd::*field)
{
    passwd account{};
    passwd* found = nullptr;
    std::vector<char> buffer(0x4000);
    if (::getpwuid_r(::geteuid(), &account, buffer.data(), buffer.size(), &found) != 0 || !found)
        return {};
    return found->*field ? found->*field : "";
}

std::string homeFolder()
{
    const char* home = std::getenv("HOME");
    return home && *home ? home : accountField(&passwd::pw_dir);
}

/// A base folder of the desktop standard; only an absolute one counts.
std::string baseFolder(const char* variable, const char* underHome)
{
    const char* folder = std::getenv(variable);
    return folder && *folder == '/' ? folder : homeFolder() + underHome;
}

/// Makes a folder and those above it, each with mode 0700.
void makeFolders(const std::string& path)
{
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        ::mkdir(path.substr(0, end).c_str(), 0700);
        if (end == std::string::npos)
            return;
    }
}

std::string ownFolder(const char* variable, const char* underHome)
{
    std::string folder = baseFolder(variable, underHome) + "/zelvora";
    makeFolders(folder);
    return folder;
}

std::string settingsFile(const std::string& application)
{
    return ownFolder("XDG_CONFIG_HOME", "/.config") + "/" + application + ".ini";
}

} // namespace

std::string installationFolder()
{
    std::vector<char> buffer(PATH_MAX);
    const ssize_t count = ::readlink("/proc/self/exe", buffer.data(), buffer.size());
    const std::string path(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    const std::size_t separator = path.rfind('/');
    return separator == std::string::npos ? "." : path.substr(0, separator);
}

std::string userFolder()
{
    return ownFolder("XDG_DATA_HOME", "/.local/share");
}

std::string systemLoginName()
{
    return accountField(&passwd::pw_name);
}

std::string settingsValue(const std::string& application, const std::string& section, const std::string& key,
                          const std::string& fallback)
{
    return profileString(settingsFile(application), section, key, fallback);
}

void setSettingsValue(const std::string& application, const std::string& section, const std::string& key,
                      const std::string& value)
{
    writeProfileString(settingsFile(application), section, key, value);
}

const char* const kProgramEnding = "";

void startProgram(const std::vector<std::string>& command, ProgramWindow)
{
    if (command.empty())
        return;
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    // The program belongs to nobody who would have to wait for its end, so a child starts it and goes.
    const pid_t child = ::fork();
    if (child == 0) {
        if (::fork() == 0) {
            ::setsid();
            // Not every library marks what it opens as this program's own.
            ::close_range(STDERR_FILENO + 1, ~0U, 0);
            ::execvp(arguments[0], arguments.data());
        }
        ::_exit(0);
    }
    if (child > 0)
        ::waitpid(child, nullptr, 0);
}

const bool kSystemHasPrintDialog = false;

void showFolder(const std::string& folder)
{
    startProgram({"xdg-open", folder});
}

std::string shortDateTime()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    char buffer[256];
    std::string text(buffer, std::strftime(buffer, sizeof buffer, "%x %X", &local));
    text.erase(std::remove(text.begin(), text.end(), ','), text.end());
    return text;
}

} // namespace zv
