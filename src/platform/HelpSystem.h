#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace zv {

/// What a viewer of compiled help files is asked for, under the system's numbers.
enum class HelpCommand : std::uint32_t {
    DisplayTopic = 0,  ///< The topic that the file opens with.
    DisplayToc = 1,    ///< The table of contents beside that topic.
    DisplayIndex = 2,  ///< The index of keywords.
    DisplaySearch = 3, ///< The search for words, with nothing searched for yet.
    HelpContext = 15,  ///< The topic of a number.
};

/// The viewer of compiled help files that this system has: HtmlHelp on Windows, the program's own elsewhere.
class HelpSystem {
public:
    virtual ~HelpSystem() = default;
    /// Carries a command out on a help file, on behalf of the desktop. `path` is in the program's own
    /// text; `contextId` counts for HelpContext only. Gives the handle of the help window, 0 when the file
    /// is missing, damaged, or has no such topic; nothing is told to the user then.
    virtual std::int32_t show(const std::string& path, HelpCommand command, std::uint32_t contextId) = 0;
    /// Whether the handle is that of a window that is open.
    virtual bool isWindow(std::int32_t handle) = 0;
    /// Closes the window as its close box would.
    virtual void close(std::int32_t handle) = 0;
};

/// A new help viewer of this system.
std::unique_ptr<HelpSystem> makeHelpSystem();

} // namespace zv
