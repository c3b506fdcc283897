#pragma once

#include "platform/Automation.h"
#include "platform/CarrierPatience.h"
#include "platform/HostEvents.h"
#include "platform/Result.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// CAD programs that are reached over local sockets: where they are found, and lines to and from them. Only
/// systems without COM have these.
namespace zv {

/// Sends and receives lines over a socket, each at most 16 MiB without its end. A longer one, or the other
/// side's end, ends the channel.
class LineChannel {
public:
    static constexpr std::size_t kLongestLine = std::size_t{16} * 1024 * 1024;
    static constexpr std::size_t kMostWaiting = std::size_t{4} * 1024 * 1024;

    /// Takes over a connected socket.
    explicit LineChannel(int descriptor);
    ~LineChannel();
    LineChannel(const LineChannel&) = delete;
    LineChannel& operator=(const LineChannel&) = delete;

    int descriptor() const { return m_descriptor; }
    /// Sends a line, its end added. `pump` turns while the other side does not read. Errors: TooLarge,
    /// nothing went out; Lost.
    Result<void> send(std::string_view line, EventPump& pump);
    /// Sends a line, its end added, as far as the other side takes it at once, and keeps the rest for
    /// sendWaiting(). A line that is too long, or one behind more than kMostWaiting, ends the channel.
    void queue(std::string_view line);
    /// Sends of what is kept as much as the other side takes at once.
    void sendWaiting();
    bool hasWaiting() const { return m_sent < m_waiting.size(); }
    /// Takes in what has come, without waiting. False once the channel has ended; lines that came whole
    /// before can still be had.
    bool readAvailable();
    /// How much has been taken in that nextLine() has not given yet.
    std::size_t unread() const { return m_received.size() - m_taken; }
    /// Gives the next whole line.
    bool nextLine(std::string& line);
    bool ended() const { return m_ended; }
    void end();
    /// Waits until something can be read, at most `timeoutMs`, with nothing else turning.
    void waitQuietly(int timeoutMs) const;

private:
    int m_descriptor;
    bool m_ended = false;
    std::string m_received;
    std::size_t m_taken = 0;    ///< Of `m_received`.
    std::size_t m_searched = 0; ///< From m_taken up to here `m_received` holds no line end.
    std::string m_waiting;      ///< To be sent.
    std::size_t m_sent = 0;     ///< Of `m_waiting`.
};

/// The folder of the running hosts' sockets. With `make` it is made where it is missing, for its owner alone.
/// Errors: NotFound; Denied, another user owns it or others may write it; Failed.
Result<std::string> hostsFolder(bool make);

/// Connects to the running host of this name. `pump` turns while it has no room for another connection.
/// Errors: NotFound, none runs; Denied; Cancelled, the wait was given up; Failed.
Result<std::unique_ptr<LineChannel>> connectToHost(const std::string& progId, EventPump& pump);

/// The socket on which a host is found, for as long as this lives. A lock keeps the name for its owner, so
/// that of two hosts that start at once only one gets it.
class HostListener {
public:
    /// Errors: Busy, another running host has the name; as hostsFolder.
    static Result<std::unique_ptr<HostListener>> open(const std::string& progId);
    ~HostListener();
    HostListener(const HostListener&) = delete;
    HostListener& operator=(const HostListener&) = delete;

    int descriptor() const { return m_descriptor; }
    /// The next connection that waits; null when there is none.
    std::unique_ptr<LineChannel> accept();

private:
    explicit HostListener(int lock);
    int m_lock;
    int m_descriptor;
    std::string m_path; ///< Of the socket, once it is there.
};

/// The words of a start file's first line: split at blanks, double quotes keep blanks, and a program without
/// a folder of its own is in the start file's `folder`. Empty when there is no program.
std::vector<std::string> startCommand(std::string_view firstLine, const std::string& folder);

/// The carrier over local sockets.
std::unique_ptr<Automation> socketAutomation(EventPump& pump, CarrierPatience patience);

} // namespace zv
