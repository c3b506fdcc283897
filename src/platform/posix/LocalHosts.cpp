#include "platform/LocalHosts.h"

#include "platform/posix/Descriptor.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace zv {

namespace {

using Clock = std::chrono::steady_clock;

/// A folder that is this user's alone to write. Errors: as hostsFolder.
Result<void> checkOwnFolder(const std::string& folder, bool make)
{
    if (make && ::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
        return systemError(folder);
    struct stat status {};
    if (::lstat(folder.c_str(), &status) != 0)
        return systemError(folder);
    if (!S_ISDIR(status.st_mode))
        return Error{ErrorCode::Denied, folder + " is no folder"};
    if (status.st_uid != ::getuid())
        return Error{ErrorCode::Denied, folder + " belongs to another user"};
    if ((status.st_mode & (S_IWGRP | S_IWOTH)) != 0)
        return Error{ErrorCode::Denied, folder + " can be written by other users"};
    return {};
}

/// The address of a socket file. A path that is too long for an address goes by way of the folder's
/// descriptor, which must stay open while the address is used.
class SocketAddress {
public:
    SocketAddress(const std::string& folder, const std::string& name)
    {
        std::string path = folder + "/" + name;
        if (path.size() >= sizeof m_address.sun_path) {
            m_folder = ::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
            path = "/proc/self/fd/" + std::to_string(m_folder) + "/" + name;
        }
        m_address.sun_family = AF_UNIX;
        m_fits = path.size() < sizeof m_address.sun_path;
        if (m_fits)
            std::memcpy(m_address.sun_path, path.c_str(), path.size() + 1);
    }
    ~SocketAddress()
    {
        if (m_folder >= 0)
            ::close(m_folder);
    }
    SocketAddress(const SocketAddress&) = delete;
    SocketAddress& operator=(const SocketAddress&) = delete;

    bool fits() const { return m_fits; }
    const sockaddr* data() const { return reinterpret_cast<const sockaddr*>(&m_address); }
    static constexpr socklen_t size() { return sizeof(sockaddr_un); }

private:
    sockaddr_un m_address{};
    int m_folder = -1;
    bool m_fits = false;
};

int newSocket()
{
    return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

/// A name that stays inside the hosts folder.
bool isPlainName(const std::string& progId)
{
    return !progId.empty() && progId.find('/') == std::string::npos && progId.front() != '.';
}

} // namespace

LineChannel::LineChannel(int descriptor) : m_descriptor(descriptor)
{
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
}

LineChannel::~LineChannel()
{
    ::close(m_descriptor);
}

void LineChannel::end()
{
    m_ended = true;
    ::shutdown(m_descriptor, SHUT_RDWR);
}

Result<void> LineChannel::send(std::string_view line, EventPump& pump)
{
    if (line.size() > kLongestLine)
        return Error{ErrorCode::TooLarge, "the message is too long"};
    const std::string message = std::string(line) + "\n";
    std::size_t sent = 0;
    while (sent < message.size() && !m_ended) {
        const ssize_t count =
            ::send(m_descriptor, message.data() + sent, message.size() - sent, MSG_NOSIGNAL);
        if (count > 0)
            sent += static_cast<std::size_t>(count);
        else if (errno == EAGAIN && pump.isGivenUp())
            end();
        else if (errno == EAGAIN)
            pump.wait(-1, 5);
        else if (errno != EINTR)
            m_ended = true;
    }
    if (m_ended)
        return Error{ErrorCode::Lost, "the program has ended"};
    return {};
}

void LineChannel::queue(std::string_view line)
{
    const std::size_t waiting = m_waiting.size() - m_sent;
    if (line.size() > kLongestLine || waiting > kMostWaiting) {
        end();
        return;
    }
    if (m_sent > m_waiting.size() / 2) {
        m_waiting.erase(0, m_sent);
        m_sent = 0;
    }
    m_waiting.append(line).push_back('\n');
    sendWaiting();
}

void LineChannel::sendWaiting()
{
    while (!m_ended && hasWaiting()) {
        const ssize_t count =
            ::send(m_descriptor, m_waiting.data() + m_sent, m_waiting.size() - m_sent, MSG_NOSIGNAL);
        if (count > 0)
            m_sent += static_cast<std::size_t>(count);
        else if (errno == EAGAIN)
            return;
        else if (errno != EINTR)
            end();
    }
    m_waiting.clear();
    m_sent = 0;
}

bool LineChannel::readAvailable()
{
    std::array<char, 65536> chunk;
    while (!m_ended) {
        const ssize_t count = ::recv(m_descriptor, chunk.data(), chunk.size(), 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 && errno == EAGAIN)
            return true;
        if (count <= 0) {
            m_ended = true;
            break;
        }
        m_received.append(chunk.data(), static_cast<std::size_t>(count));
        // A flood is taken in by portions, so that its lines are answered or refused in between.
        const bool hasLine = m_received.find('\n', m_searched) != std::string::npos;
        if (hasLine)
            return true;
        m_searched = m_received.size();
        if (unread() > kLongestLine)
            end();
    }
    return false;
}

bool LineChannel::nextLine(std::string& line)
{
    const std::size_t found = m_received.find('\n', m_searched);
    if (found == std::string::npos)
        return false;
    if (found - m_taken > kLongestLine) {
        end();
        return false;
    }
    line = m_received.substr(m_taken, found - m_taken);
    m_taken = found + 1;
    // Not for each of many short lines, as what stands behind it moves.
    if (m_taken > m_received.size() / 2) {
        m_received.erase(0, m_taken);
        m_taken = 0;
    }
    m_searched = m_taken;
    return true;
}

int openEndRequests()
{
    sigset_t requests;
    sigemptyset(&requests);
    for (const int request : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&requests, request);
    if (::sigprocmask(SIG_BLOCK, &requests, nullptr) != 0)
        return -1;
    return ::signalfd(-1, &requests, SFD_CLOEXEC | SFD_NONBLOCK);
}

void LineChannel::waitQuietly(int timeoutMs) const
{
    PlainEventPump().wait(m_descriptor, timeoutMs);
}

void PlainEventPump::wait(int descriptor, int timeoutMs)
{
    pollfd watched{descriptor, POLLIN, 0};
    ::poll(&watched, 1, timeoutMs);
}

Result<std::string> hostsFolder(bool make)
{
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    const bool hasRuntime = runtime != nullptr && *runtime != '\0';
    const std::string parent =
        hasRuntime ? std::string(runtime) + "/zelvora" : "/tmp/zelvora-" + std::to_string(::getuid());
    if (make && ::mkdir(parent.c_str(), 0700) != 0 && errno != EEXIST)
        return systemError(parent);
    // In the folder that all users share, another one may have been first to take the parent's name.
    if (!hasRuntime) {
        if (const Result<void> own = checkOwnFolder(parent, false); !own)
            return own.error();
    }
    const std::string folder = parent + "/hosts";
    if (const Result<void> own = checkOwnFolder(folder, make); !own)
        return own.error();
    return folder;
}

Result<std::unique_ptr<LineChannel>> connectToHost(const std::string& progId, EventPump& pump)
{
    const Result<std::string> folder = hostsFolder(false);
    if (!folder)
        return folder.error();
    const SocketAddress address(*folder, progId + ".sock");
    if (!isPlainName(progId) || !address.fits())
        return Error{ErrorCode::NotFound, progId + " is no name of a program"};
    if (pump.isGivenUp())
        return Waiting::givenUp();
    auto channel = std::make_unique<LineChannel>(newSocket());
    const auto deadline = Clock::now() + std::chrono::seconds(60);
    std::optional<ShownWait> shown;
    while (::connect(channel->descriptor(), address.data(), SocketAddress::size()) != 0) {
        if (errno == ECONNREFUSED || errno == ENOENT)
            return Error{ErrorCode::NotFound, progId + " is not running"};
        if (errno != EINTR && (errno != EAGAIN || Clock::now() > deadline))
            return systemError(progId);
        if (pump.isGivenUp())
            return Waiting::givenUp();
        if (!shown)
            shown.emplace(pump);
        pump.wait(-1, 20);
    }
    return channel;
}

Result<std::unique_ptr<HostListener>> HostListener::open(const std::string& progId)
{
    const Result<std::string> folder = hostsFolder(true);
    if (!folder)
        return folder.error();
    const std::string path = *folder + "/" + progId + ".sock";
    const SocketAddress address(*folder, progId + ".sock");
    if (!isPlainName(progId) || !address.fits())
        return Error{ErrorCode::Failed, path + " cannot be listened on"};
    // The file stays when its owner ends, for whoever waits for it may have opened it already.
    const std::string lockPath = *folder + "/" + progId + ".lock";
    const int lock = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    if (lock < 0)
        return systemError(lockPath);
    std::unique_ptr<HostListener> listener(new HostListener(lock));
    const Error running = {ErrorCode::Busy, progId + " is running already"};
    if (::flock(lock, LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? running : systemError(lockPath);
    // A host of another make may know nothing of the lock.
    PlainEventPump pump;
    if (const auto found = connectToHost(progId, pump); found || found.error().code != ErrorCode::NotFound)
        return running;
    ::unlink(path.c_str());
    if (::bind(listener->m_descriptor, address.data(), SocketAddress::size()) != 0)
        return systemError(path);
    listener->m_path = path;
    if (::listen(listener->m_descriptor, 64) != 0)
        return systemError(path);
    return listener;
}

HostListener::HostListener(int lock) : m_lock(lock), m_descriptor(newSocket()) {}

HostListener::~HostListener()
{
    if (!m_path.empty())
        ::unlink(m_path.c_str());
    ::close(m_descriptor);
    ::close(m_lock);
}

std::unique_ptr<LineChannel> HostListener::accept()
{
    const int connection = ::accept4(m_descriptor, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    return connection < 0 ? nullptr : std::make_unique<LineChannel>(connection);
}

} // namespace zv
