#pragma once

#include "platform/HelpSystem.h"

#include <cstdint>
#include <memory>
#include <string>

namespace zv {

/// The program's help: a compiled help file and the window that shows it. Every Help button goes through one
/// instance of it. Failures of the system's viewer pass unseen.
class HTMLHelpViewer {
public:
    explicit HTMLHelpViewer(std::unique_ptr<HelpSystem> system);
    /// Closes the help window.
    ~HTMLHelpViewer();
    HTMLHelpViewer(const HTMLHelpViewer&) = delete;
    HTMLHelpViewer& operator=(const HTMLHelpViewer&) = delete;

    /// Full path of the compiled help file, in the program's own text.
    const std::string& HelpFile() const { return m_helpFile; }
    void setHelpFile(std::string path) { m_helpFile = std::move(path); }

    void ShowContents();
    void Show();
    void ShowIndex();
    void ShowSearch();
    void ShowContext(std::int32_t contextId);
    /// Closes the help window if it is still open.
    void Unload();

    /// What the viewer gave for the last show: the help window, or 0.
    std::int32_t windowHandle() const { return m_windowHandle; }

private:
    void run(HelpCommand command, std::uint32_t contextId = 0);

    std::unique_ptr<HelpSystem> m_system;
    std::string m_helpFile;
    std::int32_t m_windowHandle = 0;
};

} // namespace zv
